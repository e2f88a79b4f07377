// SPDX-License-Identifier: MIT
#include "DescriptorLimit.h"
#include "FreshHome.h"
#include "ResultText.h"
#include "ShellProcess.h"

#include <QtTest>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

using namespace Qt::StringLiterals;

class ShellProcessTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reportsAShellThatCannotStart_data();
    void reportsAShellThatCannotStart();
    void reportsScarceDescriptors_data();
    void reportsScarceDescriptors();
    void doesWithoutAGuard_data();
    void doesWithoutAGuard();
    void reportsHowTheShellEnded_data();
    void reportsHowTheShellEnded();
    void knowsNoStatusOfWhatSomebodyElseCollected();
    void keepsItsPipesFromOtherChildren();
    void startsASessionOfItsOwn();
    void leavesNothingBehind();

private:
    FreshHome m_home;
};

namespace {

using Started = std::variant<ShellProcess, LaunchError>;

Started startLine(const std::string& line) {
    return ShellProcess::start({"-c", line});
}

std::string textOf(const FileDescriptor& stream) {
    std::string text;
    return stream.readToEnd(text) == 0 ? text : "not read";
}

} // namespace

void ShellProcessTest::reportsAShellThatCannotStart_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    const QString advice = u". Lumora runs every brew command through this shell. "
                           "Please install zsh and try again."_s;
    QTest::newRow("missing") << u"missing"_s << u"No such file or directory"_s + advice;
    QTest::newRow("not executable") << u"plain"_s << u"Permission denied"_s + advice;
    QTest::newRow("a folder") << u"folder"_s << u"Permission denied"_s + advice;
    QTest::newRow("not a program") << u"empty"_s << u"Exec format error."_s;
}

void ShellProcessTest::reportsAShellThatCannotStart() {
    QFETCH(QString, name);
    QFETCH(QString, reason);
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(u"folder"_s));
    for (const QString& file : {u"plain"_s, u"empty"_s})
        QVERIFY(QFile(folder.filePath(file)).open(QIODevice::WriteOnly));
    QVERIFY(QFile::setPermissions(folder.filePath(u"empty"_s), QFile::ReadOwner | QFile::ExeOwner));
    const QString shell = folder.filePath(name);

    const Started started = ShellProcess::start({"-c", "true"}, shell.toStdString().c_str());

    const auto* error = std::get_if<LaunchError>(&started);
    QVERIFY(error != nullptr);
    QCOMPARE(QString::fromStdString(error->description),
             shell + u" could not be started: "_s + reason);
}

void ShellProcessTest::reportsScarceDescriptors_data() {
    QTest::addColumn<int>("left");
    for (int left = 0; left < 4; ++left)
        QTest::addRow("%d left of the 4 it takes", left) << left;
}

void ShellProcessTest::reportsScarceDescriptors() {
    QFETCH(int, left);
    const int lowestBefore = DescriptorLimit::lowestFree();
    Started started = LaunchError{};
    {
        const DescriptorLimit limit(left);
        started = startLine("true");
    }
    const auto* error = std::get_if<LaunchError>(&started);
    QVERIFY(error != nullptr);
    QCOMPARE(error->description,
             std::string("/bin/zsh could not be started: Too many open files."));
    QCOMPARE(DescriptorLimit::lowestFree(), lowestBefore);
}

void ShellProcessTest::doesWithoutAGuard_data() {
    QTest::addColumn<int>("left");
    for (int left = 4; left < 6; ++left)
        QTest::addRow("%d left of the 6 it takes with a guard", left) << left;
}

void ShellProcessTest::doesWithoutAGuard() {
    QFETCH(int, left);
    const int lowestBefore = DescriptorLimit::lowestFree();
    {
        Started started = LaunchError{};
        {
            const DescriptorLimit limit(left);
            started = startLine("echo output; exit 3");
        }
        const auto& shell = std::get<ShellProcess>(started);
        QCOMPARE(textOf(shell.standardOutput()), std::string("output\n"));
        QCOMPARE(shell.waitForExit(), 3);
    }
    QCOMPARE(DescriptorLimit::lowestFree(), lowestBefore);
    QCOMPARE(::waitpid(-1, nullptr, WNOHANG), -1);
}

void ShellProcessTest::reportsHowTheShellEnded_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<std::int32_t>("status");
    QTest::newRow("well") << QByteArray("true") << 0;
    QTest::newRow("status 1") << QByteArray("exit 1") << 1;
    QTest::newRow("status 255") << QByteArray("exit 255") << 255;
    // The shell itself ends here, not a command of it.
    QTest::newRow("SIGKILL") << QByteArray("kill -KILL $$") << 137;
    QTest::newRow("SIGPIPE") << QByteArray("kill -PIPE $$") << 141;
}

void ShellProcessTest::reportsHowTheShellEnded() {
    QFETCH(QByteArray, line);
    QFETCH(std::int32_t, status);
    const Started started = startLine(line.toStdString());
    QCOMPARE(std::get<ShellProcess>(started).waitForExit(), status);
}

void ShellProcessTest::knowsNoStatusOfWhatSomebodyElseCollected() {
    const Started started = startLine("exit 3");
    QVERIFY(::waitpid(-1, nullptr, 0) > 0);
    QCOMPARE(std::get<ShellProcess>(started).waitForExit(), -1);
}

void ShellProcessTest::keepsItsPipesFromOtherChildren() {
    // Not every child of the application is started here: a browser is opened by other code.
    const Started started = startLine("true");
    const auto& shell = std::get<ShellProcess>(started);
    for (const FileDescriptor* pipe : {&shell.standardOutput(), &shell.standardError()}) {
        QVERIFY(pipe->get() > STDERR_FILENO);
        QCOMPARE(::fcntl(pipe->get(), F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    }
    QCOMPARE(shell.waitForExit(), 0);
}

void ShellProcessTest::startsASessionOfItsOwn() {
    // What ps has in its column of that name is another thing on every system.
    const Started started =
        startLine("python3 -c 'import os; print(os.getsid(os.getppid()))'; echo $$");
    const auto& shell = std::get<ShellProcess>(started);
    const QStringList answer =
        QString::fromStdString(textOf(shell.standardOutput())).simplified().split(u' ');
    QCOMPARE(shell.waitForExit(), 0);
    QCOMPARE(answer.size(), 2);
    QCOMPARE(answer[0], answer[1]);
}

void ShellProcessTest::leavesNothingBehind() {
    const int lowestBefore = DescriptorLimit::lowestFree();
    for (int i = 0; i < 20; ++i) {
        const Started started = startLine("echo output; echo error >&2");
        const auto& shell = std::get<ShellProcess>(started);
        QCOMPARE(textOf(shell.standardOutput()), std::string("output\n"));
        QCOMPARE(textOf(shell.standardError()), std::string("error\n"));
        QCOMPARE(shell.waitForExit(), 0);
    }
    QCOMPARE(DescriptorLimit::lowestFree(), lowestBefore);
    QCOMPARE(::waitpid(-1, nullptr, WNOHANG), -1);
    QCOMPARE(errno, ECHILD);
}

QTEST_GUILESS_MAIN(ShellProcessTest)
#include "tst_shellprocess.moc"
