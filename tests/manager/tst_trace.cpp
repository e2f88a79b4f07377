// SPDX-License-Identifier: MIT
#include "FakeBrew.h"
#include "FreshHome.h"
#include "Lines.h"
#include "LoadCase.h"

#include <QProcess>
#include <QtTest>

using namespace Qt::StringLiterals;

/// The program lumora-trace, whose path is in the environment variable LUMORA_TRACE.
class TraceTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void printsEachChangeAndTheResult_data();
    void printsEachChangeAndTheResult();
    void printsChangesWhenTheyHappen();
    void tracesEveryOperation_data();
    void tracesEveryOperation();
    void handsArgumentsOverUnchanged();
    void doesNotLendBrewItsInput();
    void looksForBrewByItself();
    void refusesWhatItCannotRun_data();
    void refusesWhatItCannotRun();
    void listsItsOperations();

private:
    const FreshHome m_home;
};

namespace {

struct Trace final {
    int status{-1};
    QStringList output;
    QString complaint;
};

Trace trace(const QStringList& arguments) {
    QProcess process;
    process.start(qEnvironmentVariable("LUMORA_TRACE"), arguments);
    process.waitForFinished();
    Trace trace;
    if (process.exitStatus() == QProcess::NormalExit)
        trace.status = process.exitCode();
    trace.output = lines(QString::fromUtf8(process.readAllStandardOutput()));
    trace.complaint = QString::fromUtf8(process.readAllStandardError());
    return trace;
}

Trace trace(const FakeBrew& brew, const QStringList& operation) {
    return trace(QStringList{u"--brew"_s, brew.path()} + operation);
}

} // namespace

void TraceTest::initTestCase() {
    QVERIFY2(QFile::exists(qEnvironmentVariable("LUMORA_TRACE")),
             "LUMORA_TRACE doesn't name the program");
}

void TraceTest::printsEachChangeAndTheResult_data() {
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QStringList>("operation");
    QTest::addColumn<QStringList>("output");

    QTest::newRow("load") << QByteArray("printf 'b/b\\na/a\\n'") << QStringList{u"loadTaps"_s}
                          << lines(uR"(
        announced: isLoadingTaps = true
        announced: errorMessage = none
        announced: taps = 2: "a/a", "b/b"
        announced: isLoadingTaps = false
        result: done
    )"_s);
    QTest::newRow("operation") << QByteArray("echo 'so \"far\"'; exit 1")
                               << QStringList{u"install"_s, u"iina"_s, u"cask"_s} << lines(uR"(
        announced: isRunningOperation = true
        announced: operationOutput = "Installing iina...\n"
        announced: operationOutput = "Installing iina...\nso \"far\"\n"
        announced: isRunningOperation = false
        announced: operationOutput = "Installing iina...\nso \"far\"\n\nFailed to install iina"
        result: false
    )"_s);
    QTest::newRow("report") << QByteArray("printf '한국어\\t\\033'") << QStringList{u"doctor"_s}
                            << QStringList{uR"(result: "한국어\t\u{1b}")"_s};
}

void TraceTest::printsEachChangeAndTheResult() {
    QFETCH(QByteArray, body);
    QFETCH(QStringList, operation);
    QFETCH(QStringList, output);
    const Trace result = trace(FakeBrew(body), operation);
    QCOMPARE(result.output, output);
    QCOMPARE(result.complaint, u""_s);
    QCOMPARE(result.status, 0);
}

void TraceTest::printsChangesWhenTheyHappen() {
    const FakeBrew brew;
    brew.setBody(brew.waitFor(u"go"_s));
    QProcess process;
    process.start(qEnvironmentVariable("LUMORA_TRACE"),
                  {u"--brew"_s, brew.path(), u"search"_s, u"x"_s});
    QByteArray output;
    QTRY_COMPARE(output += process.readAllStandardOutput(),
                 QByteArray("announced: isSearching = true\nannounced: errorMessage = none\n"));
    brew.open(u"go"_s);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.readAllStandardOutput(),
             QByteArray("announced: searchResults = 0\nannounced: isSearching = false\n"
                        "result: done\n"));
}

void TraceTest::tracesEveryOperation_data() {
    QTest::addColumn<QStringList>("operation");
    QTest::addColumn<QString>("commands");
    QTest::addColumn<QString>("result");
    const auto row = [](const QString& operation, const QString& commands, const QString& result) {
        QTest::newRow(qUtf8Printable(operation)) << operation.split(u' ') << commands << result;
    };
    const QString formulae = u"info --json=v2 --installed --formula"_s;
    const QString casks = u"info --json=v2 --installed --cask"_s;
    row(u"loadFormulae"_s, formulae, u"done"_s);
    row(u"loadCasks"_s, casks, u"done"_s);
    row(u"loadOutdated"_s, u"outdated --json=v2"_s, u"done"_s);
    row(u"loadTaps"_s, u"tap"_s, u"done"_s);
    row(u"refreshAll"_s, formulae + u", "_s + casks + u", outdated --json=v2, tap"_s, u"done"_s);
    row(u"search wget"_s, u"search wget"_s, u"done"_s);
    row(u"install wget"_s, u"install wget"_s, u"true"_s);
    row(u"install wget formula"_s, u"install wget"_s, u"true"_s);
    row(u"install iina cask"_s, u"install --cask iina"_s, u"true"_s);
    row(u"uninstall wget"_s, u"uninstall wget"_s, u"true"_s);
    row(u"upgrade iina cask"_s, u"upgrade --cask iina"_s, u"true"_s);
    row(u"upgradeAll"_s, u"upgrade"_s, u"true"_s);
    row(u"addTap a/b"_s, u"tap a/b"_s, u"true"_s);
    row(u"removeTap a/b"_s, u"untap a/b"_s, u"true"_s);
    row(u"getPackageInfo iina cask"_s, u"info iina"_s, uR"("")"_s);
    row(u"cleanupDryRun"_s, u"cleanup -n"_s, uR"("")"_s);
    row(u"cleanup"_s, u"cleanup"_s, uR"("Nothing to clean up.")"_s);
    row(u"doctor"_s, u"doctor"_s, uR"("")"_s);
}

void TraceTest::tracesEveryOperation() {
    QFETCH(QStringList, operation);
    QFETCH(QString, commands);
    QFETCH(QString, result);
    const FakeBrew brew;
    brew.setBody(brew.recordArguments());
    const Trace traced = trace(brew, operation);
    QCOMPARE(traced.output.value(traced.output.size() - 1), u"result: "_s + result);
    QStringList run;
    for (const QStringList& arguments : brew.recordedRuns())
        run.append(arguments.join(u' '));
    run.sort();
    QStringList expected = commands.split(u", "_s);
    expected.sort();
    QCOMPARE(run, expected);
}

void TraceTest::handsArgumentsOverUnchanged() {
    for (const QString& name : {u"--force"_s, u"-h"_s, u" it's $HOME\n"_s, u"한국어"_s, u""_s}) {
        const FakeBrew brew;
        brew.setBody(brew.recordArguments());
        QCOMPARE(trace(brew, {u"removeTap"_s, name}).status, 0);
        QCOMPARE(brew.recordedRuns(), (QList<QStringList>{{u"untap"_s, name}}));
    }
}

void TraceTest::doesNotLendBrewItsInput() {
    const FakeBrew brew("read -r answer; echo \"answer: $answer\"");
    QProcess process;
    process.start(qEnvironmentVariable("LUMORA_TRACE"), {u"--brew"_s, brew.path(), u"cleanup"_s});
    process.write("yes\n");
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.readAllStandardOutput(), QByteArray("result: \"answer: \\n\"\n"));
}

void TraceTest::looksForBrewByItself() {
    for (const QString& earlier : {u"/opt/homebrew/bin/brew"_s, u"/usr/local/bin/brew"_s}) {
        if (QFile::exists(earlier))
            QSKIP("this machine has a Homebrew that is found first");
    }
    m_home.write(u".homebrew/bin/brew"_s, "#!/bin/sh\necho found\n");
    QFile::setPermissions(m_home.path() + u"/.homebrew/bin/brew"_s,
                          QFile::ReadOwner | QFile::ExeOwner);
    QCOMPARE(trace({u"doctor"_s}).output, QStringList{uR"(result: "found\n")"_s});
}

void TraceTest::refusesWhatItCannotRun_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("complaint");
    QTest::addColumn<int>("status");
    const auto row = [](const char* what, const QStringList& arguments, const QString& complaint,
                        int status) {
        QTest::newRow(what) << arguments << u"lumora-trace: "_s + complaint + u'\n' << status;
    };
    row("nothing", {}, u"no operation was given; --help lists them"_s, 2);
    row("unknown operation", {u"pour"_s}, u"\"pour\" is not an operation; --help lists them"_s, 2);
    row("no name", {u"install"_s}, u"install takes NAME [formula|cask]"_s, 2);
    row("one argument too many", {u"search"_s, u"a"_s, u"b"_s}, u"search takes QUERY"_s, 2);
    row("argument for nothing", {u"doctor"_s, u"-v"_s}, u"doctor takes no arguments"_s, 2);
    row("unknown type", {u"upgrade"_s, u"a"_s, u"Cask"_s},
        u"a package is a formula or a cask, not \"Cask\""_s, 2);
    row("no such brew", {u"--brew"_s, u"/nowhere/brew"_s, u"doctor"_s}, u"there is no brew"_s, 1);
}

void TraceTest::refusesWhatItCannotRun() {
    QFETCH(QStringList, arguments);
    QFETCH(QString, complaint);
    QFETCH(int, status);
    const Trace result = trace(arguments);
    QCOMPARE(result.complaint, complaint);
    QCOMPARE(result.output, QStringList());
    QCOMPARE(result.status, status);
}

void TraceTest::listsItsOperations() {
    const Trace result = trace({u"--help"_s});
    QCOMPARE(result.status, 0);
    QVERIFY(result.output.contains(u"install NAME [formula|cask]"_s));
    QVERIFY(result.output.contains(u"cleanupDryRun"_s));
    QVERIFY(result.output.join(u'\n').contains(u"--brew <path>"_s));
}

QTEST_GUILESS_MAIN(TraceTest)
#include "tst_trace.moc"
