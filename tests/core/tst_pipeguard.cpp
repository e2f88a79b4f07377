// SPDX-License-Identifier: MIT
#include "FakeBrew.h"
#include "FreshHome.h"
#include "ResultText.h"
#include "SecondProcess.h"
#include "TerminalProcess.h"

#include <QProcess>

#include <sys/resource.h>
#ifdef __linux__
#include <sys/prctl.h>
#endif

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>

using namespace Qt::StringLiterals;

/// A command at work outlives the process that has started it, however that ends.
class PipeGuardTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void cleanupTestCase();
    void letsTheCommandFinish_data();
    void letsTheCommandFinish();
    void letsTheCommandFinishWheneverTheProcessIsKilled();
    void outlivesTheEndOfALoginSession();
    void needsNoCat();
    void hasANameAndASessionOfItsOwn();
    void goesOnceBothPipesAreRead();

private:
    [[nodiscard]] bool endsWithinASecond(TerminalProcess& process);

    std::unique_ptr<FreshHome> m_home;
    qint64 m_slowestEnd{};
};

namespace {

constexpr int patience = 30'000;

constexpr int exitSignal = SIGUSR1;
constexpr int abortSignal = SIGUSR2;

/// Runs `brew`, and ends before it does when told by a signal.
int runBrew(const QStringList& arguments) {
    const rlimit noCore{};
    ::setrlimit(RLIMIT_CORE, &noCore);
    std::signal(exitSignal, [](int) { ::_exit(EXIT_SUCCESS); });
    std::signal(abortSignal, [](int) { std::abort(); });
    std::puts("ready");
    std::fflush(stdout);
    static_cast<void>(runBrewSync(arguments[0].toStdString(), {"upgrade"}));
    return EXIT_SUCCESS;
}

QByteArray lineThatRuns(const FakeBrew& brew) {
    return SecondProcess::scriptLine(u"run"_s, {brew.path()});
}

using Leave = std::function<void(TerminalProcess&)>;

Leave bySignal(int number) {
    return [number](TerminalProcess& process) { process.send(number); };
}

/// Every way to end, by its name.
const std::map<QByteArray, Leave>& waysToEnd() {
    constexpr char controlC = 3;
    static const std::map<QByteArray, Leave> ways{
        {"exit", bySignal(exitSignal)},
        {"abort", bySignal(abortSignal)},
        {"SIGTERM", bySignal(SIGTERM)},
        {"SIGHUP", bySignal(SIGHUP)},
        {"SIGINT", bySignal(SIGINT)},
        {"SIGSEGV", bySignal(SIGSEGV)},
        {"SIGKILL", bySignal(SIGKILL)},
        {"Ctrl+C", [](TerminalProcess& process) { process.type(controlC); }},
        {"the terminal closes", &TerminalProcess::closeTerminal},
    };
    return ways;
}

/// Ten times what a pipe holds at the most.
const QByteArray flood = "yes | head -c 10000000";

/// The processes whose parent is `parent`, and their names.
QMap<pid_t, QByteArray> childrenOf(pid_t parent) {
    QProcess ps;
    // macOS takes all that is behind an equals sign for a heading, and `comm` for a path.
    ps.start(u"ps"_s, {u"-A"_s, u"-o"_s, u"ppid="_s, u"-o"_s, u"pid="_s, u"-o"_s, u"stat="_s,
                       u"-o"_s, u"ucomm="_s});
    ps.waitForFinished();
    QMap<pid_t, QByteArray> children;
    for (const QByteArray& line : ps.readAllStandardOutput().split('\n')) {
        const QByteArrayList words = line.simplified().split(' ');
        if (words.size() >= 4 && words[0].toInt() == parent && !words[2].startsWith('Z'))
            children.insert(words[1].toInt(), words[3]);
    }
    children.remove(static_cast<pid_t>(ps.processId()));
    return children;
}

/// What starting and ending a process takes at the moment, at the worst of a few times.
qint64 millisecondsForNothing() {
    constexpr int times = 5;
    qint64 slowest = 0;
    for (int i = 0; i < times; ++i) {
        QElapsedTimer timer;
        timer.start();
        QProcess::execute(u"/bin/sh"_s, {u"-c"_s, u"exit"_s});
        slowest = std::max(slowest, timer.elapsed());
    }
    return slowest;
}

/// Whether all has ended that a process of this test has left.
bool isNothingLeft() {
#ifdef __linux__
    while (::waitpid(-1, nullptr, WNOHANG) > 0) {
    }
    return ::waitpid(-1, nullptr, WNOHANG) < 0 && errno == ECHILD;
#else
    return true; // Only Linux gives a process the children of its children.
#endif
}

} // namespace

void PipeGuardTest::init() {
    m_home = std::make_unique<FreshHome>();
#ifdef __linux__
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
#endif
}

void PipeGuardTest::cleanup() {
    QTRY_VERIFY_WITH_TIMEOUT(isNothingLeft(), patience);
}

void PipeGuardTest::cleanupTestCase() {
    qInfo("The slowest end took %lld ms", m_slowestEnd);
}

/// Where the processors have other work it may take as long as many processes that do nothing.
bool PipeGuardTest::endsWithinASecond(TerminalProcess& process) {
    QElapsedTimer timer;
    timer.start();
    const bool hasEnded = QTest::qWaitFor([&process] { return process.hasEnded(); }, patience);
    const qint64 time = timer.elapsed();
    m_slowestEnd = std::max(m_slowestEnd, time);
    constexpr qint64 second = 1000;
    constexpr int nothings = 50;
    return hasEnded && time < std::max(second, nothings * millisecondsForNothing());
}

void PipeGuardTest::letsTheCommandFinish_data() {
    QTest::addColumn<QByteArray>("way");
    QTest::addColumn<bool>("hasBegun");
    QTest::addColumn<QByteArray>("work");
    for (const auto& [way, leave] : waysToEnd()) {
        const auto row = [&way = way](const char* moment, bool hasBegun, const QByteArray& work) {
            QTest::addRow("%s: %s", way.constData(), moment) << way << hasBegun << work;
        };
        row("before brew has begun", false, flood + '\n' + flood + " >&2");
        row("with a word to say", true, "echo done\necho done >&2");
        row("with a flood of output", true, flood);
        row("with a flood of errors", true, flood + " >&2");
        row("with both at once", true,
            flood + " & " + flood + " >&2\nwait $!\necho done\necho done >&2");
    }
}

void PipeGuardTest::letsTheCommandFinish() {
    QFETCH(const QByteArray, way);
    QFETCH(const bool, hasBegun);
    QFETCH(const QByteArray, work);
    const FakeBrew brew;
    const QByteArray wait = brew.reach(u"there"_s) + brew.waitFor(u"go"_s);
    if (!hasBegun)
        m_home->write(u".zshenv"_s, wait);
    // `yes` always dies of a broken pipe; the status of a pipeline is that of its last command.
    brew.setBody("set -e\n" + (hasBegun ? wait : QByteArray()) + work + '\n' +
                 brew.reach(u"finished"_s));
    TerminalProcess process(lineThatRuns(brew));
    QTRY_VERIFY_WITH_TIMEOUT(brew.hasReached(u"there"_s), patience);

    waysToEnd().at(way)(process);
    QVERIFY(endsWithinASecond(process));
    QVERIFY(!brew.hasReached(u"finished"_s));
    brew.open(u"go"_s);
    QTRY_VERIFY_WITH_TIMEOUT(brew.hasReached(u"finished"_s), patience);
}

void PipeGuardTest::letsTheCommandFinishWheneverTheProcessIsKilled() {
#ifndef __linux__
    QSKIP("Only Linux tells when the command has ended.");
#endif
    constexpr int times = 24;
    constexpr std::chrono::microseconds step{50};
    int begun = 0;
    for (int i = 0; i < times; ++i) {
        const FakeBrew brew;
        brew.setBody("set -e\n" + brew.reach(u"begun"_s) + flood + '\n' + flood + " >&2\n" +
                     brew.reach(u"finished"_s));
        TerminalProcess process(lineThatRuns(brew));
        process.waitForOutput();
        const auto end = std::chrono::steady_clock::now() + i * i * step;
        while (std::chrono::steady_clock::now() < end) {
        }
        process.send(SIGKILL);
        QTRY_VERIFY_WITH_TIMEOUT(process.hasEnded(), patience);
        QTRY_VERIFY_WITH_TIMEOUT(isNothingLeft(), patience);
        QCOMPARE(brew.hasReached(u"finished"_s), brew.hasReached(u"begun"_s));
        begun += brew.hasReached(u"begun"_s) ? 1 : 0;
    }
    qInfo("%d of %d commands had been started", begun, times);
}

void PipeGuardTest::outlivesTheEndOfALoginSession() {
#ifndef __linux__
    QSKIP("Only Linux tells who has been left.");
#endif
    // The system then sends these to every process of the session.
    const FakeBrew brew;
    brew.setBody("set -e\n" + brew.reach(u"there"_s) + brew.waitFor(u"go"_s) + flood + '\n' +
                 flood + " >&2\n" + brew.reach(u"finished"_s));
    TerminalProcess process(lineThatRuns(brew));
    QTRY_VERIFY_WITH_TIMEOUT(brew.hasReached(u"there"_s), patience);
    process.send(SIGKILL);
    QTRY_VERIFY_WITH_TIMEOUT(process.hasEnded(), patience);

    QList<pid_t> readers;
    const auto findReaders = [&readers] {
        readers.clear();
        qsizetype cats = 0;
        QList<pid_t> parents{::getpid()};
        while (!parents.isEmpty()) {
            const QMap<pid_t, QByteArray> children = childrenOf(parents.takeLast());
            parents += children.keys();
            readers += children.keys("sh") + children.keys("cat");
            cats += children.keys("cat").size();
        }
        return cats == 2;
    };
    QTRY_VERIFY_WITH_TIMEOUT(findReaders(), patience);
    for (const pid_t reader : std::as_const(readers)) {
        for (const int signal : {SIGHUP, SIGINT, SIGTERM})
            ::kill(reader, signal);
    }
    brew.open(u"go"_s);
    QTRY_VERIFY_WITH_TIMEOUT(brew.hasReached(u"finished"_s), patience);
}

void PipeGuardTest::needsNoCat() {
    const QString namespaced = u"unshare --user --map-root-user --mount "_s;
    if (QProcess::execute(u"/bin/sh"_s, {u"-c"_s, namespaced + u"true 2> /dev/null"_s}) != 0)
        QSKIP("This system lets nobody have a mount namespace.");
    const FakeBrew brew;
    // A shell reads a byte at a time.
    brew.setBody("set -e\n! cat /dev/null 2> /dev/null\n" + brew.reach(u"there"_s) +
                 brew.waitFor(u"go"_s) + "yes | head -c 200000\nyes | head -c 1200000 >&2\n" +
                 brew.reach(u"finished"_s));
    const QByteArray withoutCat = "exec " + namespaced.toUtf8() +
                                  "sh -c 'mount --bind /dev/null \"$(command -v cat)\" && exec "
                                  "\"$@\"' sh ";
    TerminalProcess process(withoutCat + lineThatRuns(brew).sliced(sizeof("exec")));
    QTRY_VERIFY_WITH_TIMEOUT(brew.hasReached(u"there"_s), patience);

    process.send(SIGKILL);
    QTRY_VERIFY_WITH_TIMEOUT(process.hasEnded(), patience);
    brew.open(u"go"_s);
    QTRY_VERIFY_WITH_TIMEOUT(brew.hasReached(u"finished"_s), patience);
}

void PipeGuardTest::hasANameAndASessionOfItsOwn() {
    // Whoever waits for the application to end looks for its name.
    const FakeBrew brew;
    brew.setBody(brew.reach(u"there"_s) + brew.waitFor(u"go"_s));
    TerminalProcess process(lineThatRuns(brew));
    QTRY_VERIFY_WITH_TIMEOUT(brew.hasReached(u"there"_s), patience);

    const QMap<pid_t, QByteArray> children = childrenOf(process.id());
    QByteArrayList names = children.values();
    std::ranges::sort(names);
    QCOMPARE(names, (QByteArrayList{"brew", "sh"}));
    for (auto child = children.keyBegin(); child != children.keyEnd(); ++child)
        QCOMPARE(::getsid(*child), *child);
    brew.open(u"go"_s);
    QTRY_VERIFY_WITH_TIMEOUT(process.hasEnded(), patience);
}

void PipeGuardTest::goesOnceBothPipesAreRead() {
    const FakeBrew brew;
    brew.setBody("exec >&- 2>&-\n" + brew.waitFor(u"go"_s));
    TerminalProcess process(lineThatRuns(brew));
    QTRY_COMPARE_WITH_TIMEOUT(childrenOf(process.id()).values(), QByteArrayList{"brew"}, patience);
    QVERIFY(!process.hasEnded());
    brew.open(u"go"_s);
    QTRY_VERIFY_WITH_TIMEOUT(process.hasEnded(), patience);
}

int main(int argc, char* argv[]) {
    return SecondProcess::main<PipeGuardTest>(argc, argv, {{u"run"_s, runBrew}});
}

#include "tst_pipeguard.moc"
