// SPDX-License-Identifier: MIT
#include "BrewDiscovery.h"
#include "DescriptorLimit.h"
#include "FreshHome.h"
#include "ResultText.h"

#include <QtTest>

#include <pwd.h>
#include <unistd.h>

#include <filesystem>

using namespace Qt::StringLiterals;

class BrewDiscoveryTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void looksInTheUsualPlaces_data();
    void looksInTheUsualPlaces();
    void takesTheFirstThatExists_data();
    void takesTheFirstThatExists();
    void acceptsADoubledSlash();
    void passesOverAPathThatIsNotUtf8();
    void asksOnlyWhenNoCandidateExists();
    void findsWhatAProfilePutsOnThePath_data();
    void findsWhatAProfilePutsOnThePath();
    void judgesTheShellsAnswer_data();
    void judgesTheShellsAnswer();
    void findsNothingWhenTheShellCannotStart();
    void leavesTheShellAlone();
    void asksAShellInASessionOfItsOwn();
    void knowsTheHomeFolder();

private:
    /// A file in a fresh home folder, absolute.
    [[nodiscard]] std::string path(const QString& relativePath) const {
        return (m_home->path() + u'/' + relativePath).toStdString();
    }

    std::unique_ptr<FreshHome> m_home;
};

namespace {

std::string askShell() {
    return BrewDiscovery{.candidates = {}}.run();
}

} // namespace

void BrewDiscoveryTest::init() {
    m_home = std::make_unique<FreshHome>();
    qputenv("PATH", "/usr/bin:/bin");
}

void BrewDiscoveryTest::looksInTheUsualPlaces_data() {
    QTest::addColumn<std::string>("home");
    QTest::addColumn<std::string>("inHome");
    QTest::newRow("home") << std::string("/home/kim")
                          << std::string("/home/kim/.homebrew/bin/brew");
    QTest::newRow("trailing slash")
        << std::string("/home/kim/") << std::string("/home/kim//.homebrew/bin/brew");
    QTest::newRow("no home") << std::string() << std::string("/.homebrew/bin/brew");
}

void BrewDiscoveryTest::looksInTheUsualPlaces() {
    QFETCH(std::string, home);
    QFETCH(std::string, inHome);
    const BrewDiscovery usual = BrewDiscovery::usual(home);
    QCOMPARE(usual.candidates,
             (std::vector<std::string>{"/opt/homebrew/bin/brew", "/usr/local/bin/brew", inHome,
                                       "/home/linuxbrew/.linuxbrew/bin/brew"}));
    QVERIFY(usual.askShell);
}

void BrewDiscoveryTest::takesTheFirstThatExists_data() {
    QTest::addColumn<QStringList>("existing");
    QTest::addColumn<QString>("found");
    QTest::newRow("first of all") << QStringList{u"a"_s, u"b"_s, u"c"_s} << u"a"_s;
    QTest::newRow("last two") << QStringList{u"c"_s, u"b"_s} << u"b"_s;
    QTest::newRow("only the last") << QStringList{u"c"_s} << u"c"_s;
    QTest::newRow("a folder is good enough") << QStringList{u"b/"_s, u"c"_s} << u"b"_s;
    QTest::newRow("a link to a file") << QStringList{u"b@c"_s, u"c"_s} << u"b"_s;
    QTest::newRow("a link to itself") << QStringList{u"a@a"_s, u"c"_s} << u"c"_s;
    QTest::newRow("a link to nothing") << QStringList{u"a@nothing"_s, u"c"_s} << u"c"_s;
    QTest::newRow("none") << QStringList{} << QString();
}

void BrewDiscoveryTest::takesTheFirstThatExists() {
    QFETCH(QStringList, existing);
    QFETCH(QString, found);
    for (const QString& name : existing) {
        const QStringList link = name.split(u'@');
        if (link.size() == 2)
            QVERIFY(QFile::link(link[1], m_home->path() + u'/' + link[0]));
        else if (name.endsWith(u'/'))
            QVERIFY(QDir(m_home->path()).mkdir(name));
        else // Not executable: that is for the shell to find out.
            m_home->write(name, "");
    }
    const BrewDiscovery discovery{.candidates = {path(u"a"_s), path(u"b"_s), path(u"c"_s)},
                                  .askShell = false};
    QCOMPARE(discovery.run(), found.isEmpty() ? std::string() : path(found));
}

void BrewDiscoveryTest::acceptsADoubledSlash() {
    m_home->write(u".homebrew/bin/brew"_s, "");
    const std::string candidate =
        BrewDiscovery::usual(m_home->path().toStdString() + '/').candidates[2];
    QCOMPARE((BrewDiscovery{.candidates = {candidate}, .askShell = false}.run()),
             path(u"/.homebrew/bin/brew"_s));
}

void BrewDiscoveryTest::passesOverAPathThatIsNotUtf8() {
    const std::string home = path(u"caf"_s) + '\xE9';
    const std::string candidate = BrewDiscovery::usual(home).candidates[2];
    std::filesystem::create_directories(candidate);
    QVERIFY(std::filesystem::exists(candidate));
    QCOMPARE((BrewDiscovery{.candidates = {candidate}, .askShell = false}.run()), std::string());
    QCOMPARE((BrewDiscovery{.candidates = {candidate, path(u"."_s)}, .askShell = false}.run()),
             path(u"."_s));
}

void BrewDiscoveryTest::asksOnlyWhenNoCandidateExists() {
    m_home->write(u"brew"_s, "");
    m_home->write(u".zshenv"_s, ": > ~/asked\n");
    QCOMPARE((BrewDiscovery{.candidates = {path(u"brew"_s)}}.run()), path(u"brew"_s));
    QVERIFY(!QFile::exists(m_home->path() + u"/asked"_s));
    QCOMPARE((BrewDiscovery{.candidates = {path(u"none"_s)}}.run()), std::string());
    QVERIFY(QFile::exists(m_home->path() + u"/asked"_s));
}

void BrewDiscoveryTest::findsWhatAProfilePutsOnThePath_data() {
    QTest::addColumn<QString>("profile");
    QTest::newRow("login profile") << u".zprofile"_s;
    QTest::newRow("interactive start-up file") << u".zshrc"_s;
    QTest::newRow("environment file") << u".zshenv"_s;
    QTest::newRow("login file") << u".zlogin"_s;
}

void BrewDiscoveryTest::findsWhatAProfilePutsOnThePath() {
    QFETCH(QString, profile);
    m_home->write(u"my tools/brew"_s, "#!/bin/sh\n");
    QFile::setPermissions(m_home->path() + u"/my tools/brew"_s, QFile::ReadOwner | QFile::ExeOwner);
    m_home->write(profile, "export PATH=\"$PATH:$HOME/my tools\"\n");
    QCOMPARE(askShell(), path(u"my tools/brew"_s));
}

void BrewDiscoveryTest::judgesTheShellsAnswer_data() {
    QTest::addColumn<QByteArray>("which");
    QTest::addColumn<bool>("found");
    // Functions of the user's profile win over the shell's own commands.
    QTest::newRow("a path") << QByteArray("print $HOME/brew") << true;
    QTest::newRow("blanks around")
        << QByteArray("print -n \"\\n \\t $HOME/brew\\r\\n  \\n\"") << true;
    QTest::newRow("Unicode blanks around")
        << QByteArray("print -n \"\xC2\xA0\xE2\x80\x83\xE2\x80\xA8$HOME/brew\xC2\x85\xE3\x80\x80\"")
        << true;
    QTest::newRow("a blank inside is part of it")
        << QByteArray("print $HOME/brew two; : > \"$HOME/brew two\"") << true;
    QTest::newRow("two blanks inside are, too")
        << QByteArray("print \"$HOME/brew  two\"; : > \"$HOME/brew  two\"") << true;
    QTest::newRow("not ASCII") << QByteArray("print $HOME/브루; : > $HOME/브루") << true;
    QTest::newRow("failing status") << QByteArray("print $HOME/brew; return 1") << true;
    // Nobody reads it: less than the smallest pipe holds.
    QTest::newRow("noise on standard error")
        << QByteArray("print $HOME/brew; head -c 4000 /dev/zero >&2") << true;
    QTest::newRow("noise before it") << QByteArray("print Welcome!; print $HOME/brew") << false;
    QTest::newRow("a message") << QByteArray("print brew not found; return 1") << false;
    QTest::newRow("an alias") << QByteArray("print brew: aliased to $HOME/brew") << false;
    QTest::newRow("no such file") << QByteArray("print $HOME/none") << false;
    QTest::newRow("not UTF-8") << QByteArray("print $HOME/$'bro\\xFFken'; : > $HOME/$'bro\\xFFken'")
                               << false;
    QTest::newRow("longer than a path can be")
        << QByteArray("print $HOME/${(l:5000::x:)}") << false;
    QTest::newRow("a link to itself")
        << QByteArray("ln -s loop $HOME/loop; print $HOME/loop") << false;
    QTest::newRow("only blanks") << QByteArray("print '  '") << false;
    QTest::newRow("nothing") << QByteArray(":") << false;
    QTest::newRow("the shell ends early") << QByteArray("exit 3") << false;
}

void BrewDiscoveryTest::judgesTheShellsAnswer() {
    QFETCH(QByteArray, which);
    QFETCH(bool, found);
    m_home->write(u"brew"_s, "");
    m_home->write(u".zshrc"_s, "which() { " + which + "; }\n");
    QString name = u"brew"_s;
    for (const QString& other : {u"brew two"_s, u"brew  two"_s, u"브루"_s}) {
        if (which.contains(other.toUtf8()))
            name = other;
    }
    QCOMPARE(askShell(), found ? path(name) : std::string());
}

void BrewDiscoveryTest::findsNothingWhenTheShellCannotStart() {
    m_home->write(u"brew"_s, "");
    m_home->write(u".zshrc"_s, "which() { print $HOME/brew; }\n");
    std::string found = "not asked yet";
    {
        const DescriptorLimit limit(0);
        found = askShell();
    }
    QCOMPARE(found, std::string());
    QCOMPARE(askShell(), path(u"brew"_s));
}

void BrewDiscoveryTest::leavesTheShellAlone() {
    m_home->write(u"brew"_s, "");
    m_home->write(u".zshrc"_s, "which() { print $HOME/brew; }\n");
    QCOMPARE((BrewDiscovery{.candidates = {}, .askShell = false}.run()), std::string());
}

void BrewDiscoveryTest::asksAShellInASessionOfItsOwn() {
    m_home->write(u"brew"_s, "");
    m_home->write(u".zshrc"_s, "which() { python3 -c 'import os; print(os.getsid(0))' > ~/session\n"
                               "print $HOME/brew; }\n");
    QCOMPARE(askShell(), path(u"brew"_s));
    QFile session(m_home->path() + u"/session"_s);
    QVERIFY(session.open(QIODevice::ReadOnly));
    const int id = session.readAll().trimmed().toInt();
    QVERIFY(id > 0);
    QVERIFY(id != ::getsid(0));
}

void BrewDiscoveryTest::knowsTheHomeFolder() {
    QCOMPARE(homeDirectory(), m_home->path().toStdString());
    const passwd* user = ::getpwuid(::getuid());
    QVERIFY(user != nullptr);
    for (const char* const unusable : {"", static_cast<const char*>(nullptr)}) {
        if (unusable != nullptr)
            qputenv("HOME", unusable);
        else
            qunsetenv("HOME");
        QCOMPARE(homeDirectory(), std::string(user->pw_dir));
    }
}

QTEST_GUILESS_MAIN(BrewDiscoveryTest)
#include "tst_brewdiscovery.moc"
