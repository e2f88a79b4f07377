// SPDX-License-Identifier: MIT
#include "DescriptorLimit.h"
#include "FakeBrew.h"
#include "FreshHome.h"
#include "ResultText.h"
#include "RunBrewSync.h"
#include "SecondProcess.h"
#include "ShellProcess.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

using namespace Qt::StringLiterals;

/// What a command finds around it, whatever the application itself is surrounded by.
class ChildSurroundingsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void givesOnlyTheStandardStreams();
    void worksWithoutStandardStreamsOfItsOwn();
    void givesEverySignalItsDefaultAction_data();
    void givesEverySignalItsDefaultAction();
    void preparesForChildren_data();
    void preparesForChildren();
    void leavesStandardInputToTheApplication();
    void keepsTheApplicationsStreamsClean();

private:
    FreshHome m_home;
};

namespace {

CommandResult run(const QString& brewPath) {
    return std::get<CommandResult>(runBrewSync(brewPath.toStdString(), {"list"}));
}

int listDescriptors(const QStringList&) {
    constexpr int highest = 1024;
    std::string open;
    for (int fd = 0; fd < highest; ++fd) {
        if (::fcntl(fd, F_GETFD) >= 0)
            open += std::to_string(fd) + ' ';
    }
    std::fputs(open.c_str(), stdout);
    return 0;
}

int runWithoutStandardStreams(const QStringList& arguments) {
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::close(fd);
    // A pipe in the place of a stream would get what libraries print there.
    const auto started = ShellProcess::start({"-c", "true"});
    const auto& shell = std::get<ShellProcess>(started);
    if (shell.standardOutput().get() <= STDERR_FILENO ||
        shell.standardError().get() <= STDERR_FILENO || shell.waitForExit() != 0)
        return 1;
    const CommandResult expected{"out\n", "err\n", 6};
    return run(arguments.value(0)) == expected ? 0 : 2;
}

/// Prints what a command says that reads its standard input.
int runFromATerminal(const QStringList& arguments) {
    std::signal(SIGCHLD, SIG_IGN);
    int ends[2];
    if (::pipe(ends) != 0 || ::write(ends[1], "typed\n", 6) != 6)
        return 1;
    if (arguments.contains(u"closed"_s))
        ::close(STDIN_FILENO);
    else
        ::dup2(ends[0], STDIN_FILENO);

    prepareForChildProcesses();

    // A shell would put up with a closed one, other programs wouldn't.
    if (::fcntl(STDIN_FILENO, F_GETFD) != 0)
        return 2;
    const CommandResult result = run(arguments.value(0));
    std::fputs(result.standardOutput.c_str(), stdout);
    return result.status;
}

int runWithStandardInput(const QStringList& arguments) {
    int ends[2];
    if (::pipe(ends) != 0 || ::write(ends[1], "typed\n", 6) != 6)
        return 1;
    ::dup2(ends[0], STDIN_FILENO);
    std::fputs(run(arguments.value(0)).standardOutput.c_str(), stdout);
    return 0;
}

/// Runs a command that prints, with whatever number of descriptors is left; errors, too, go to
/// standard output.
int runQuietly(const QStringList& arguments) {
    ::dup2(STDOUT_FILENO, STDERR_FILENO);
    const std::string brewPath = arguments[0].toStdString();
    for (const std::string& path : {brewPath, brewPath + "/missing"}) {
        static_cast<void>(runBrewSync(path, {"list"}));
        constexpr int usedByARun = 8;
        for (int left = 0; left < usedByARun; ++left) {
            const DescriptorLimit limit(left);
            static_cast<void>(runBrewSync(path, {"list"}));
        }
    }
    return 0;
}

} // namespace

void ChildSurroundingsTest::givesOnlyTheStandardStreams() {
    // As a careless library would open it: without close-on-exec.
    const int leaking = ::open("/dev/null", O_RDONLY);
    QVERIFY(leaking > STDERR_FILENO);
    const FakeBrew brew(SecondProcess::scriptLine(u"list-descriptors"_s));
    const CommandResult result = run(brew.path());
    ::close(leaking);
    QCOMPARE(result, (CommandResult{"0 1 2 ", "", 0}));
}

void ChildSurroundingsTest::worksWithoutStandardStreamsOfItsOwn() {
    const FakeBrew brew("echo out; echo err >&2; exit 6");
    QCOMPARE(SecondProcess(u"without-streams"_s, {brew.path()}).status(), 0);
}

void ChildSurroundingsTest::givesEverySignalItsDefaultAction_data() {
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("isBlocked");
    QTest::newRow("SIGPIPE ignored") << SIGPIPE << false;
    QTest::newRow("SIGPIPE blocked") << SIGPIPE << true;
    QTest::newRow("SIGTERM blocked") << SIGTERM << true;
}

void ChildSurroundingsTest::givesEverySignalItsDefaultAction() {
    QFETCH(int, number);
    QFETCH(bool, isBlocked);
    sigset_t blocked;
    sigset_t usual;
    sigemptyset(&blocked);
    if (isBlocked)
        sigaddset(&blocked, number);
    else
        std::signal(number, SIG_IGN);
    ::pthread_sigmask(SIG_BLOCK, &blocked, &usual);

    const FakeBrew brew("kill -" + QByteArray::number(number) + " $$\necho survived");
    const CommandResult result = run(brew.path());

    ::pthread_sigmask(SIG_SETMASK, &usual, nullptr);
    std::signal(number, SIG_DFL);
    QCOMPARE(result, (CommandResult{"", "", 128 + number}));
}

void ChildSurroundingsTest::preparesForChildren_data() {
    QTest::addColumn<QStringList>("standardInput");
    QTest::newRow("open") << QStringList{};
    QTest::newRow("closed") << QStringList{u"closed"_s};
}

void ChildSurroundingsTest::preparesForChildren() {
    QFETCH(QStringList, standardInput);
    // A question finds no answer, and the status arrives although the parent of the
    // application had told it to forget its children.
    const FakeBrew brew("read answer || echo no answer; exit 9");
    const SecondProcess process(u"from-terminal"_s, QStringList{brew.path()} + standardInput);
    QCOMPARE(process.output(), QByteArray("no answer\n"));
    QCOMPARE(process.status(), 9);
}

void ChildSurroundingsTest::leavesStandardInputToTheApplication() {
    const FakeBrew brew("read answer && echo \"$answer it is\"");
    QCOMPARE(SecondProcess(u"with-input"_s, {brew.path()}).output(), QByteArray("typed it is\n"));
}

void ChildSurroundingsTest::keepsTheApplicationsStreamsClean() {
    m_home.write(u".zprofile"_s, "echo Welcome!\necho Careful! >&2\n");
    const FakeBrew brew("echo output\necho error >&2\nyes | head -c 100000\nkill -SEGV $$");
    const SecondProcess process(u"quietly"_s, {brew.path()});
    m_home.write(u".zprofile"_s, {});
    QCOMPARE(process.output(), QByteArray());
    QCOMPARE(process.status(), 0);
}

int main(int argc, char* argv[]) {
    return SecondProcess::main<ChildSurroundingsTest>(
        argc, argv,
        {{u"list-descriptors"_s, listDescriptors},
         {u"without-streams"_s, runWithoutStandardStreams},
         {u"from-terminal"_s, runFromATerminal},
         {u"with-input"_s, runWithStandardInput},
         {u"quietly"_s, runQuietly}});
}

#include "tst_childsurroundings.moc"
