// SPDX-License-Identifier: MIT
#include "BackgroundRun.h"
#include "FileDescriptor.h"
#include "FreshHome.h"
#include "OpenPipes.h"
#include "ResultText.h"
#include "SecondProcess.h"

#include <QProcess>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>

using namespace Qt::StringLiterals;

class OpenPipesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keepsACommandAliveThatOutlivesItsReader_data();
    void keepsACommandAliveThatOutlivesItsReader();
    void drainsUnderAnotherName();
    void countsTheRunsInFlight();
    void takesNothingFromARunThatGoesOn();

private:
    FreshHome m_home;
};

namespace {

constexpr int patienceMilliseconds = 10'000;

/// Starts the fake brew of that folder and ends without waiting for it, as an application does
/// whose window is closed. Tells which children it has left: their ids and names.
int leaveWhileBrewRuns(const QStringList& arguments) {
    const std::string brewPath = arguments.value(0).toStdString();
    const QString mark = arguments.value(1);
    OpenPipes openPipes;
    std::thread([&] {
        static_cast<void>(runBrewSync(brewPath, {"upgrade"}, &openPipes));
    }).detach();
    if (!QTest::qWaitFor([&] { return QFile::exists(mark); }, patienceMilliseconds))
        ::_exit(1);

    if (arguments.contains(u"hand-over"_s)) {
        if (!QTest::qWaitFor([&] { return openPipes.handOver() == 1; }, patienceMilliseconds))
            ::_exit(1);
        QProcess ps;
        ps.start(u"ps"_s, {u"-A"_s, u"-o"_s, u"ppid=,pid=,comm="_s});
        ps.waitForFinished();
        for (const QByteArray& line : ps.readAllStandardOutput().split('\n')) {
            const QList<QByteArray> words = line.simplified().split(' ');
            if (words.size() >= 3 && words[0].toInt() == ::getpid())
                std::printf("%s %s\n", words[1].constData(), words[2].constData());
        }
        std::fflush(stdout);
    }
    ::_exit(0);
}

/// A brew that, told to go on, says more than a pipe holds, first on standard error, and
/// notes how that ended.
QByteArray talkativeBody(const FakeBrew& brew) {
    const QByteArray ended = brew.folder().toUtf8() + "/ended";
    return brew.reach(u"started"_s) + brew.waitFor(u"go"_s) +
           "sh -c 'head -c 3000000 /dev/zero >&2 && head -c 3000000 /dev/zero'\n"
           "echo $? > " +
           ended + ".part\nmv " + ended + ".part " + ended;
}

QByteArray howItEnded(const FakeBrew& brew) {
    QFile file(brew.folder() + u"/ended"_s);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
}

bool isRunning(int processID) {
    QProcess ps;
    ps.start(u"ps"_s, {u"-o"_s, u"stat="_s, u"-p"_s, QString::number(processID)});
    ps.waitForFinished();
    const QByteArray state = ps.readAllStandardOutput().trimmed();
    return !state.isEmpty() && !state.startsWith('Z');
}

} // namespace

void OpenPipesTest::keepsACommandAliveThatOutlivesItsReader_data() {
    QTest::addColumn<QStringList>("manner");
    QTest::addColumn<QByteArray>("status");
    QTest::newRow("handed over") << QStringList{u"hand-over"_s} << QByteArray("0");
    // What happens otherwise: 128 and the number of SIGPIPE.
    QTest::newRow("left alone") << QStringList{} << QByteArray("141");
}

void OpenPipesTest::keepsACommandAliveThatOutlivesItsReader() {
    QFETCH(QStringList, manner);
    QFETCH(QByteArray, status);
    const FakeBrew brew;
    brew.setBody(talkativeBody(brew));
    const SecondProcess application(
        u"leave"_s, QStringList{brew.path(), brew.folder() + u"/started"_s} + manner);
    QCOMPARE(application.status(), 0);
    QVERIFY(brew.hasReached(u"started"_s));

    brew.open(u"go"_s);

    QTRY_COMPARE_WITH_TIMEOUT(howItEnded(brew), status, patienceMilliseconds);
}

void OpenPipesTest::drainsUnderAnotherName() {
    // Whoever waits for the application to end looks for its name.
    const FakeBrew brew;
    brew.setBody(talkativeBody(brew));
    const SecondProcess application(u"leave"_s,
                                    {brew.path(), brew.folder() + u"/started"_s, u"hand-over"_s});
    QCOMPARE(application.status(), 0);

    QList<int> drains;
    for (const QByteArray& line : application.output().trimmed().split('\n')) {
        if (line.split(' ').value(1) == "cat")
            drains.append(line.split(' ').value(0).toInt());
    }
    QVERIFY2(drains.size() == 2, application.output());
    QVERIFY(std::ranges::all_of(drains, isRunning));

    brew.open(u"go"_s);
    QTRY_VERIFY_WITH_TIMEOUT(std::ranges::none_of(drains, isRunning), patienceMilliseconds);
}

void OpenPipesTest::countsTheRunsInFlight() {
    OpenPipes openPipes;
    QCOMPARE(openPipes.handOver(), 0);
    const FakeBrew brew;
    brew.setBody(brew.meet(2) + brew.reach(u"here"_s) + brew.waitFor(u"go"_s));
    const BackgroundRun one(brew, {}, &openPipes);
    const BackgroundRun two(brew, {}, &openPipes);
    QTRY_VERIFY_WITH_TIMEOUT(brew.hasReached(u"here"_s), patienceMilliseconds);
    QTRY_COMPARE_WITH_TIMEOUT(openPipes.handOver(), 2, patienceMilliseconds);
    brew.open(u"go"_s);
    QTRY_VERIFY_WITH_TIMEOUT(one.isDone() && two.isDone(), patienceMilliseconds);

    // The numbers of the pipes mean something else by now.
    std::array<FileDescriptor, 16> others;
    for (FileDescriptor& other : others)
        other = FileDescriptor(::dup(STDERR_FILENO));
    QCOMPARE(openPipes.handOver(), 0);
}

void OpenPipesTest::takesNothingFromARunThatGoesOn() {
    // The window may be closed and the application yet not end: then the run still ends.
    OpenPipes openPipes;
    const FakeBrew brew;
    brew.setBody(brew.reach(u"started"_s) + brew.waitFor(u"go"_s) + "exit 4");
    const BackgroundRun run(brew, {}, &openPipes);
    QTRY_VERIFY_WITH_TIMEOUT(brew.hasReached(u"started"_s), patienceMilliseconds);
    QTRY_COMPARE_WITH_TIMEOUT(openPipes.handOver(), 1, patienceMilliseconds);
    brew.open(u"go"_s);
    QTRY_VERIFY_WITH_TIMEOUT(run.isDone(), patienceMilliseconds);
    QCOMPARE(run.result().status, 4);
}

int main(int argc, char* argv[]) {
    return SecondProcess::main<OpenPipesTest>(argc, argv, {{u"leave"_s, leaveWhileBrewRuns}});
}

#include "tst_openpipes.moc"
