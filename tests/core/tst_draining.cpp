// SPDX-License-Identifier: MIT
#include "BackgroundRun.h"
#include "FileDescriptor.h"
#include "FreshHome.h"
#include "ResultText.h"
#include "SecondProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>

using namespace Qt::StringLiterals;

/// How a run's two pipes are read to their ends.
class DrainingTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsTheErrorStreamAfterTheOutputStream_data();
    void readsTheErrorStreamAfterTheOutputStream();
    void givesTheErrorStreamALargePipe();
    void waitsForWhoeverHoldsTheStreams_data();
    void waitsForWhoeverHoldsTheStreams();
    void runsFourCommandsAtOnce();
    void endsEachRunWithItsOwnCommand();
    void goesOnAfterASignal_data();
    void goesOnAfterASignal();

private:
    FreshHome m_home;
};

namespace {

constexpr int patienceMilliseconds = 10'000;

constexpr int largestCapacity = 1024 * 1024;

/// How much the pipe behind a descriptor holds.
int capacity(int fd) {
#ifdef F_GETPIPE_SZ
    return ::fcntl(fd, F_GETPIPE_SZ);
#else
    static_cast<void>(fd);
    return 64 * 1024;
#endif
}

/// The system bounds the memory of all pipes of a user, who may have used it up.
bool grantsLargePipes() {
#ifdef F_SETPIPE_SZ
    Pipe pipe;
    return pipe.open() == 0 &&
           ::fcntl(pipe.writeEnd.get(), F_SETPIPE_SZ, largestCapacity) >= largestCapacity;
#else
    return false;
#endif
}

/// Writes so many bytes more to standard error than its pipe holds, and tells on standard
/// output how much it holds and where it had to stop, nobody reading; goes on once it has
/// closed standard output.
int floodStandardError(const QStringList& arguments) {
    const auto held = static_cast<std::size_t>(capacity(STDERR_FILENO));
    const auto total = held + static_cast<std::size_t>(arguments.value(0).toLongLong());
    const std::string bytes(total, 'e');
    std::size_t written = 0;
    const auto writeOn = [&] {
        const ssize_t count = ::write(STDERR_FILENO, bytes.data() + written, total - written);
        written += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        return count > 0;
    };

    const int flags = ::fcntl(STDERR_FILENO, F_GETFL);
    ::fcntl(STDERR_FILENO, F_SETFL, flags | O_NONBLOCK);
    constexpr int somebodyWouldHaveReadMilliseconds = 500;
    pollfd errorPipe{.fd = STDERR_FILENO, .events = POLLOUT, .revents = 0};
    while (written < total) {
        if (!writeOn() && ::poll(&errorPipe, 1, somebodyWouldHaveReadMilliseconds) == 0)
            break;
    }
    std::printf("%zu %zu", held, written);
    std::fflush(stdout);
    ::close(STDOUT_FILENO);

    ::fcntl(STDERR_FILENO, F_SETFL, flags);
    while (written < total && writeOn()) {
    }
    return written == total ? 0 : 1;
}

std::atomic<int> signalsSeen{0};

} // namespace

void DrainingTest::readsTheErrorStreamAfterTheOutputStream_data() {
    QTest::addColumn<qsizetype>("excess");
    QTest::newRow("a full pipe") << qsizetype{0};
    QTest::newRow("one byte more") << qsizetype{1};
    QTest::newRow("a flood") << qsizetype{7 * largestCapacity};
}

void DrainingTest::readsTheErrorStreamAfterTheOutputStream() {
    QFETCH(qsizetype, excess);
    const FakeBrew brew(SecondProcess::scriptLine(u"flood"_s, {QString::number(excess)}));
    const BackgroundRun run(brew);
    QTRY_VERIFY_WITH_TIMEOUT(run.isDone(), patienceMilliseconds);
    const CommandResult result = run.result();
    QCOMPARE(result.status, 0);
    const QList<QByteArray> told = QByteArray::fromStdString(result.standardOutput).split(' ');
    QCOMPARE(told.size(), 2);
    QCOMPARE(told[1], told[0]);
    QCOMPARE(static_cast<qsizetype>(result.standardError.size()), told[0].toLongLong() + excess);
}

void DrainingTest::givesTheErrorStreamALargePipe() {
    if (!grantsLargePipes())
        QSKIP("The system grants no large pipe.");
    const FakeBrew brew(SecondProcess::scriptLine(u"flood"_s, {u"0"_s}));
    const BackgroundRun run(brew);
    QTRY_VERIFY_WITH_TIMEOUT(run.isDone(), patienceMilliseconds);
    QCOMPARE(static_cast<int>(run.result().standardError.size()), largestCapacity);
}

void DrainingTest::waitsForWhoeverHoldsTheStreams_data() {
    QTest::addColumn<QByteArray>("redirection");
    QTest::addColumn<CommandResult>("result");
    QTest::newRow("output") << QByteArray("2> /dev/null") << CommandResult{"early\nlate\n", "", 3};
    QTest::newRow("error") << QByteArray("> /dev/null") << CommandResult{"early\n", "later\n", 3};
}

void DrainingTest::waitsForWhoeverHoldsTheStreams() {
    QFETCH(QByteArray, redirection);
    QFETCH(CommandResult, result);
    const FakeBrew brew;
    brew.setBody("( " + brew.waitFor(u"go"_s) + "echo late; echo later >&2 ) " + redirection +
                 " &\necho early\n" + brew.reach(u"end"_s) + "exit 3");
    const BackgroundRun run(brew);
    QTRY_VERIFY_WITH_TIMEOUT(brew.hasReached(u"end"_s), patienceMilliseconds);
    QVERIFY(!run.isDone());
    brew.open(u"go"_s);
    QTRY_VERIFY_WITH_TIMEOUT(run.isDone(), patienceMilliseconds);
    QCOMPARE(run.result(), result);
}

void DrainingTest::runsFourCommandsAtOnce() {
    const FakeBrew brew;
    brew.setBody(brew.meet(4) + "echo \"$1\"");
    std::vector<BackgroundRun> runs;
    for (const char* const name : {"one", "two", "three", "four"})
        runs.emplace_back(brew, std::vector<std::string>{name});
    QTRY_VERIFY_WITH_TIMEOUT(std::ranges::all_of(runs, &BackgroundRun::isDone),
                             patienceMilliseconds);
    QCOMPARE(runs[0].result(), (CommandResult{"one\n", "", 0}));
    QCOMPARE(runs[1].result(), (CommandResult{"two\n", "", 0}));
    QCOMPARE(runs[2].result(), (CommandResult{"three\n", "", 0}));
    QCOMPARE(runs[3].result(), (CommandResult{"four\n", "", 0}));
}

void DrainingTest::endsEachRunWithItsOwnCommand() {
    // Whichever child was started last could hold the pipes of all the others open.
    const QStringList names{u"one"_s, u"two"_s, u"three"_s, u"four"_s};
    const FakeBrew brew;
    QByteArray body = brew.meet(4);
    for (const QString& name : names)
        body += "if [ \"$1\" = " + name.toUtf8() + " ]; then\n" + brew.waitFor(name) + "fi\n";
    brew.setBody(body);
    std::vector<BackgroundRun> runs;
    for (const QString& name : names)
        runs.emplace_back(brew, std::vector<std::string>{name.toStdString()});

    for (std::size_t ended = 0; ended < runs.size(); ++ended) {
        brew.open(names[static_cast<qsizetype>(ended)]);
        QTRY_VERIFY_WITH_TIMEOUT(runs[ended].isDone(), patienceMilliseconds);
        QCOMPARE(std::ranges::count_if(runs, &BackgroundRun::isDone),
                 static_cast<std::ptrdiff_t>(ended + 1));
        QCOMPARE(runs[ended].result(), CommandResult{});
    }
}

void DrainingTest::goesOnAfterASignal_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<CommandResult>("result");
    QTest::newRow("reading output") << QByteArray("printf early") << QByteArray("printf late")
                                    << CommandResult{"earlylate", "", 7};
    QTest::newRow("reading errors")
        << QByteArray("exec >&-") << QByteArray("printf late >&2") << CommandResult{"", "late", 7};
    QTest::newRow("waiting for the exit")
        << QByteArray("exec >&- 2>&-") << QByteArray(":") << CommandResult{"", "", 7};
}

void DrainingTest::goesOnAfterASignal() {
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QFETCH(CommandResult, result);

    // Without SA_RESTART every system call that is waiting ends with EINTR.
    struct sigaction interrupt {};

    interrupt.sa_handler = [](int) { ++signalsSeen; };

    struct sigaction usual {};

    ::sigaction(SIGUSR1, &interrupt, &usual);

    const FakeBrew brew;
    brew.setBody(before + '\n' + brew.reach(u"there"_s) + brew.waitFor(u"go"_s) + after +
                 "\nexit 7");
    const BackgroundRun run(brew);
    QTRY_VERIFY_WITH_TIMEOUT(brew.hasReached(u"there"_s), patienceMilliseconds);
    for (int sent = 0; sent < 50 && !run.isDone(); ++sent) {
        const int seen = signalsSeen;
        // Again and again, since the thread sanitizer may keep one back until the next.
        const auto isSeen = [&] {
            ::pthread_kill(run.thread(), SIGUSR1);
            return signalsSeen > seen;
        };
        QTRY_VERIFY_WITH_TIMEOUT(isSeen(), patienceMilliseconds);
    }
    QVERIFY(!run.isDone());
    brew.open(u"go"_s);
    QTRY_VERIFY_WITH_TIMEOUT(run.isDone(), patienceMilliseconds);
    ::sigaction(SIGUSR1, &usual, nullptr);
    QCOMPARE(run.result(), result);
}

int main(int argc, char* argv[]) {
    return SecondProcess::main<DrainingTest>(argc, argv, {{u"flood"_s, floodStandardError}});
}

#include "tst_draining.moc"
