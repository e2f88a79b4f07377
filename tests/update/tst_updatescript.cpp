// SPDX-License-Identifier: MIT
#include "ApplicationBundle.h"
#include "OwnPgrep.h"
#include "SampleBundle.h"
#include "UpdateScript.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

using namespace Qt::StringLiterals;

class UpdateScriptTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hasFourteenLines();
    void takesPathsAsTheyAre();
    void startsTheNewBundleWithArguments();
    void knowsWhichPathsItCanName_data();
    void knowsWhichPathsItCanName();
    void swapsTheBundles();
    void waitsUntilTheApplicationIsGone();
    void doesNotWaitForOthers();
    void goesOnAfterThirtyTries();
};

namespace {

constexpr int patience = 120'000;

/// Two bundles and a script between them, in a folder with a blank in its name.
class Swap final {
public:
    Swap() : m_old(path(u"my apps/Lumora.app"_s), u"0.1.9"_s) {
        const SampleBundle ready(path(u"unpacked/Lumora.app"_s), u"0.2.0"_s);
        m_newBundle = SampleBundle::snapshot(ready.path());
        write(script().archivePath, "archive");
        write(script().scriptPath, script().text().toUtf8());
    }

    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }

    [[nodiscard]] UpdateScript script() const {
        return {.appPath = m_old.path(),
                .newPath = path(u"unpacked/Lumora.app"_s),
                .archivePath = path(u"the archive.tar.gz"_s),
                .unpackFolder = path(u"unpacked"_s),
                .scriptPath = path(u"lumora-update.sh"_s)};
    }

    [[nodiscard]] const SampleBundle& old() const { return m_old; }

    /// Runs the script; commands in the folder `instead` take the place of the system's.
    void start(QProcess& process) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"PATH"_s, path(u"instead"_s) + u':' + environment.value(u"PATH"_s));
        process.setProcessEnvironment(environment);
        process.start(u"/bin/bash"_s, {script().scriptPath});
    }

    void addCommand(const QString& name, const QByteArray& body) const {
        QDir().mkpath(path(u"instead"_s));
        const QString file = path(u"instead/"_s + name);
        write(file, "#!/bin/sh\n" + body + '\n');
        QFile::setPermissions(file, QFile::ReadOwner | QFile::ExeOwner);
    }

    [[nodiscard]] QList<QByteArray> lines(const QString& name) const {
        QFile file(path(name));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return file.readAll().trimmed().split('\n');
    }

    void verifyDone() const {
        QTRY_COMPARE_WITH_TIMEOUT(m_old.lastStarted(), u"0.2.0"_s, patience);
        QByteArray expected = m_newBundle;
        expected.replace(script().newPath.toUtf8(), m_old.path().toUtf8());
        QCOMPARE(SampleBundle::snapshot(m_old.path()), expected);
        for (const QString& file :
             {script().archivePath, script().unpackFolder, script().scriptPath})
            QVERIFY2(!QFile::exists(file), qPrintable(file));
    }

private:
    static void write(const QString& path, const QByteArray& content) {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("%s could not be written", qUtf8Printable(path));
    }

    OwnPgrep m_pgrep;
    QTemporaryDir m_folder;
    SampleBundle m_old;
    QByteArray m_newBundle;
};

} // namespace

void UpdateScriptTest::hasFourteenLines() {
    const UpdateScript script{.appPath = u"/apps/Lumora.app"_s,
                              .newPath = u"/tmp/lumora-update-extract/Lumora.app"_s,
                              .archivePath = u"/tmp/lumora-update-0.2.0.tar.gz"_s,
                              .unpackFolder = u"/tmp/lumora-update-extract"_s,
                              .scriptPath = u"/tmp/lumora-update.sh"_s};
#ifdef Q_OS_MACOS
    const QString last = u"open \"/apps/Lumora.app\""_s;
#else
    const QString last = u"setsid \"/apps/Lumora.app/Contents/bin/Lumora\" > /dev/null 2>&1 &"_s;
#endif
    const QString others = u"#!/bin/bash\n"
                           "for i in $(seq 1 30); do\n"
                           "    if ! pgrep -x \"Lumora\" > /dev/null 2>&1; then\n"
                           "        break\n"
                           "    fi\n"
                           "    sleep 1\n"
                           "done\n"
                           "sleep 1\n"
                           "rm -rf \"/apps/Lumora.app\"\n"
                           "mv \"/tmp/lumora-update-extract/Lumora.app\" \"/apps/Lumora.app\"\n"
                           "rm -f \"/tmp/lumora-update-0.2.0.tar.gz\"\n"
                           "rm -rf \"/tmp/lumora-update-extract\"\n"
                           "rm -f \"/tmp/lumora-update.sh\"\n"_s;
    QCOMPARE(script.text(), others + last);
    QCOMPARE(script.text().count(u'\n') + 1, 14);
}

void UpdateScriptTest::takesPathsAsTheyAre() {
    const UpdateScript script{.appPath = u"/한 글/%1 'a' & \"b\".app"_s,
                              .newPath = u"n"_s,
                              .archivePath = u"a"_s,
                              .unpackFolder = u"u"_s,
                              .scriptPath = u"s"_s};
    QCOMPARE(script.text().split(u'\n').value(8), u"rm -rf \"/한 글/%1 'a' & \"b\".app\""_s);
}

void UpdateScriptTest::startsTheNewBundleWithArguments() {
    const Swap swap;
    const QStringList arguments{u"--brew"_s, u"/o'p't/$(touch code)/ü %1\"`\\"_s, QString()};
    UpdateScript script = swap.script();
    script.arguments = arguments;
    const QString line = script.text().section(u'\n', -1);
    QVERIFY2(line.startsWith(swap.script().text().section(u'\n', -1).section(u" >"_s, 0, 0)),
             qPrintable(line));
    // As a shell takes them.
    QString call = line;
#ifdef Q_OS_MACOS
    call.replace(u"open \""_s + script.appPath + u"\" --args"_s, u"printf '%s\\n'"_s);
#else
    call.replace(u"setsid \""_s + swap.old().executable() + u'"', u"printf '%s\\n'"_s);
    call.chop(QStringLiteral(" > /dev/null 2>&1 &").size());
#endif
    QProcess shell;
    shell.start(u"/bin/bash"_s, {u"-c"_s, call});
    QVERIFY(shell.waitForFinished());
    QCOMPARE(QString::fromUtf8(shell.readAll()), arguments.join(u'\n') + u'\n');
}

void UpdateScriptTest::knowsWhichPathsItCanName_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("can");

    QTest::newRow("plain") << u"/Applications/Lumora.app"_s << true;
    QTest::newRow("blanks and others") << u"/a b/ü 한글 (1) & *; #!~/Lumora.app"_s << true;
    QTest::newRow("double quote") << u"/a\"b"_s << false;
    QTest::newRow("single quote") << u"/a'b"_s << false;
    QTest::newRow("dollar") << u"/a$b"_s << false;
    QTest::newRow("backquote") << u"/a`b"_s << false;
    QTest::newRow("backslash") << u"/a\\b"_s << false;
}

void UpdateScriptTest::knowsWhichPathsItCanName() {
    QFETCH(const QString, path);
    QTEST(UpdateScript::canName(path), "can");
}

void UpdateScriptTest::swapsTheBundles() {
    const Swap swap;
    QProcess process;
    swap.start(process);
    swap.verifyDone();
    QTRY_COMPARE(process.state(), QProcess::NotRunning);
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(process.readAll(), QByteArray());
}

void UpdateScriptTest::waitsUntilTheApplicationIsGone() {
    const Swap swap;
    // The application looks at its own bundle just before it ends.
    QProcess application;
    const QString program = swap.path(u"Lumora"_s);
    QVERIFY(QFile::copy(u"/bin/sh"_s, program));
    const QString bundle = swap.old().executable();
    application.start(
        program, {u"-c"_s, u"read line; cat \"%1\" > \"%2\""_s.arg(bundle, swap.path(u"seen"_s))});
    QVERIFY(application.waitForStarted());

    // It may do so once the script has looked for it for the third time.
    swap.addCommand(u"sleep"_s,
                    "echo \"$@\" >> '" + swap.path(u"naps"_s).toUtf8() + "'; exec /bin/sleep 0.1");
    QProcess process;
    swap.start(process);
    QTRY_VERIFY_WITH_TIMEOUT(swap.lines(u"naps"_s).size() >= 3, patience);
    const QByteArray before = SampleBundle::snapshot(swap.old().path());
    QVERIFY(before.contains("echo 0.1.9"));
    application.write("end\n");
    swap.verifyDone();
    QTRY_COMPARE(application.state(), QProcess::NotRunning);
    QVERIFY(swap.lines(u"seen"_s).join('\n').contains("echo 0.1.9"));
    QTRY_COMPARE(process.state(), QProcess::NotRunning);
}

void UpdateScriptTest::doesNotWaitForOthers() {
    const Swap swap;
    // Only the exact name counts.
    QProcess other;
    const QString program = swap.path(u"Lumora2"_s);
    QVERIFY(QFile::copy(u"/bin/sh"_s, program));
    other.start(program, {u"-c"_s, u"read line"_s});
    QVERIFY(other.waitForStarted());
    QProcess process;
    swap.start(process);
    swap.verifyDone();
    QCOMPARE(other.state(), QProcess::Running);
    other.write("end\n");
    QTRY_COMPARE(other.state(), QProcess::NotRunning);
    QTRY_COMPARE(process.state(), QProcess::NotRunning);
}

void UpdateScriptTest::goesOnAfterThirtyTries() {
    const Swap swap;
    const auto note = [&swap](const QString& file) {
        return "echo \"$@\" >> '" + swap.path(file).toUtf8() + '\'';
    };
    swap.addCommand(u"sleep"_s, note(u"naps"_s));
    swap.addCommand(u"pgrep"_s, note(u"looks"_s));
    QProcess process;
    swap.start(process);
    swap.verifyDone();
    QCOMPARE(swap.lines(u"looks"_s), QList<QByteArray>(30, "-x Lumora"));
    QCOMPARE(swap.lines(u"naps"_s), QList<QByteArray>(31, "1"));
    QTRY_COMPARE(process.state(), QProcess::NotRunning);
}

QTEST_GUILESS_MAIN(UpdateScriptTest)
#include "tst_updatescript.moc"
