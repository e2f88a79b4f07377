// SPDX-License-Identifier: MIT
#include "BrewAt.h"
#include "FreshHome.h"
#include "Lines.h"
#include "LoadCase.h"
#include "PublicationRecorder.h"

#include <QPromise>
#include <QtTest>

using namespace Qt::StringLiterals;

class RefreshAllTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startsTheFourLoadsInOrder();
    void publishesInTheOrderOfTheCommandsEnds();
    void runsAllFourAtOnce();
    void takesAsLongAsTheSlowest();
    void returnsAfterTheSlowest_data();
    void returnsAfterTheSlowest();
    void keepsTheMessageOfTheLoadThatFailedLast_data();
    void keepsTheMessageOfTheLoadThatFailedLast();
    void replacesTheOtherListsWhenOneReportIsBroken();
    void failsFourTimesWithoutBrew();
    void mayOverlapItself();
    void holdsItsCommandsBackAsLongAsIsWished();
    void startsNothingThatIsHeldBackOnceTheManagerIsGone();

private:
    const FreshHome m_home;
};

namespace {

bool isLoadingAnything(const BrewManager& manager) {
    return *manager.isLoadingFormulae || *manager.isLoadingCasks || *manager.isLoadingOutdated ||
           *manager.isLoadingTaps;
}

QByteArray waitForOwnGate(const FakeBrew& brew, const LoadCase& row) {
    return brew.waitFor(row.name);
}

} // namespace

void RefreshAllTest::startsTheFourLoadsInOrder() {
    const FakeBrew brew;
    brew.setBody(LoadCase::answers(brew, [&](const LoadCase&) { return brew.waitFor(u"go"_s); }));
    BrewManager manager(brewAt(brew));
    const PublicationRecorder recorder(manager);

    const auto task = manager.refreshAll();
    QCOMPARE(recorder.lines(), lines(uR"(
        announced: isLoadingFormulae = true
        announced: errorMessage = none
        announced: isLoadingCasks = true
        announced: errorMessage = none
        announced: isLoadingOutdated = true
        announced: errorMessage = none
        announced: isLoadingTaps = true
        announced: errorMessage = none
    )"_s));
    brew.open(u"go"_s);
    QTRY_VERIFY(task.isReady());
}

void RefreshAllTest::publishesInTheOrderOfTheCommandsEnds() {
    const FakeBrew brew;
    brew.setBody(
        LoadCase::answers(brew, [&](const LoadCase& row) { return waitForOwnGate(brew, row); }));
    BrewManager manager(brewAt(brew));
    const auto task = manager.refreshAll();
    const PublicationRecorder recorder(manager);

    brew.open(u"taps"_s);
    QTRY_VERIFY(!*manager.isLoadingTaps);
    brew.open(u"casks"_s);
    QTRY_VERIFY(!*manager.isLoadingCasks);
    brew.open(u"outdated"_s);
    QTRY_VERIFY(!*manager.isLoadingOutdated);
    brew.open(u"formulae"_s);
    QTRY_VERIFY(task.isReady());
    QCOMPARE(recorder.lines(), lines(uR"(
        announced: taps = 2: "homebrew/core", "user/tools"
        announced: isLoadingTaps = false
        announced: casks = 2: "alfred", "iina"
        announced: isLoadingCasks = false
        announced: outdatedFormulae = 1: "wget"
        announced: outdatedCasks = 1: "iina"
        announced: isLoadingOutdated = false
        announced: formulae = 2: "jq", "wget"
        announced: isLoadingFormulae = false
    )"_s));
}

void RefreshAllTest::runsAllFourAtOnce() {
    const FakeBrew brew;
    brew.setBody(brew.recordArguments() +
                 LoadCase::answers(brew, [&](const LoadCase&) { return brew.meet(4); }));
    BrewManager manager(brewAt(brew));

    const auto task = manager.refreshAll();
    QTRY_VERIFY_WITH_TIMEOUT(task.isReady(), 30'000);
    QCOMPARE(*manager.errorMessage, std::nullopt);

    QSet<QStringList> expected;
    for (const LoadCase& row : LoadCase::all())
        expected.insert(row.arguments);
    const QList<QStringList> runs = brew.recordedRuns();
    QCOMPARE(runs.size(), 4);
    QCOMPARE(QSet<QStringList>(runs.begin(), runs.end()), expected);
}

void RefreshAllTest::takesAsLongAsTheSlowest() {
    const FakeBrew brew;
    brew.setBody(LoadCase::answers(brew, [](const LoadCase&) { return "sleep 1\n"; }));
    BrewManager manager(brewAt(brew));
    QElapsedTimer timer;
    timer.start();
    QCoro::waitFor(manager.refreshAll());
    const qint64 elapsed = timer.elapsed();
    qInfo("four commands of 1000 ms each: %lld ms", elapsed);
    QCOMPARE(*manager.errorMessage, std::nullopt);
    QVERIFY(elapsed >= 1000);
    QVERIFY(elapsed < 2000);
}

void RefreshAllTest::returnsAfterTheSlowest_data() {
    LoadCase::addRows();
}

void RefreshAllTest::returnsAfterTheSlowest() {
    QFETCH(QString, load);
    const LoadCase& slowest = LoadCase::named(load);
    const FakeBrew brew;
    brew.setBody(LoadCase::answers(brew, [&](const LoadCase& row) {
        return row.name == load ? brew.waitFor(u"go"_s) : QByteArray();
    }));
    BrewManager manager(brewAt(brew));

    const auto task = manager.refreshAll();
    for (const LoadCase& row : LoadCase::all()) {
        if (row.name != load)
            QTRY_VERIFY(!*(manager.*row.flag));
    }
    QVERIFY(*(manager.*slowest.flag));
    QVERIFY(!task.isReady());

    brew.open(u"go"_s);
    QTRY_VERIFY(!*(manager.*slowest.flag));
    QVERIFY(task.isReady());
}

void RefreshAllTest::keepsTheMessageOfTheLoadThatFailedLast_data() {
    QTest::addColumn<QStringList>("failing");
    QTest::addColumn<QString>("message");
    QTest::newRow("first, then third")
        << QStringList{u"formulae"_s, u"outdated"_s} << u"brew outdated failed"_s;
    QTest::newRow("third, then first")
        << QStringList{u"outdated"_s, u"formulae"_s} << u"brew info --installed --formula failed"_s;
    QTest::newRow("backwards") << QStringList{u"taps"_s, u"outdated"_s, u"casks"_s}
                               << u"brew info --installed --cask failed"_s;
}

void RefreshAllTest::keepsTheMessageOfTheLoadThatFailedLast() {
    QFETCH(QStringList, failing);
    QFETCH(QString, message);
    const FakeBrew brew;
    brew.setBody(LoadCase::answers(brew, [&](const LoadCase& row) {
        return waitForOwnGate(brew, row) + (failing.contains(row.name) ? "exit 1\n" : "");
    }));
    BrewManager manager(brewAt(brew));

    const auto task = manager.refreshAll();
    for (const QString& name : failing) {
        brew.open(name);
        QTRY_VERIFY(!*(manager.*LoadCase::named(name).flag));
    }
    // Those that succeed after it leave it alone.
    for (const LoadCase& row : LoadCase::all())
        brew.open(row.name);
    QTRY_VERIFY(task.isReady());
    QCOMPARE(*manager.errorMessage, std::optional(message));
}

void RefreshAllTest::replacesTheOtherListsWhenOneReportIsBroken() {
    const FakeBrew brew;
    brew.setBody(LoadCase::answers(brew, [](const LoadCase& row) {
        return row.name == u"outdated"_s ? "echo '{}'; exit\n" : "";
    }));
    BrewManager manager(brewAt(brew));
    QCoro::waitFor(manager.refreshAll());
    QCOMPARE(*manager.errorMessage,
             std::optional(u"Failed to load outdated: formulae: expected list, found nothing"_s));
    QCOMPARE(manager.formulae->size(), 2);
    QCOMPARE(manager.casks->size(), 2);
    QCOMPARE(manager.taps->size(), 2);
    QVERIFY(manager.outdatedFormulae->isEmpty());
    QVERIFY(!isLoadingAnything(manager));
}

void RefreshAllTest::failsFourTimesWithoutBrew() {
    const FakeBrew brew;
    BrewManager manager(brewAt(brew));
    brew.remove();
    const PublicationRecorder recorder(manager);
    QCoro::waitFor(manager.refreshAll());

    const QString text = recorder.lines().join(u'\n');
    QStringList possible;
    for (const LoadCase& row : LoadCase::all()) {
        QCOMPARE(text.count(u"errorMessage = \""_s + row.statusFailure + u'"'), 1);
        possible.append(row.statusFailure);
    }
    QVERIFY(possible.contains(manager.errorMessage->value_or(u""_s)));
    QVERIFY(!isLoadingAnything(manager));
}

void RefreshAllTest::mayOverlapItself() {
    const FakeBrew brew;
    brew.setBody(brew.recordArguments() +
                 LoadCase::answers(brew, [&](const LoadCase&) { return brew.waitFor(u"go"_s); }));
    BrewManager manager(brewAt(brew));
    const auto first = manager.refreshAll();
    const auto second = manager.refreshAll();
    QTRY_COMPARE(brew.recordedRuns().size(), 8);
    QVERIFY(!first.isReady() && !second.isReady());
    brew.open(u"go"_s);
    QTRY_VERIFY(first.isReady() && second.isReady());
    QVERIFY(!isLoadingAnything(manager));
    QCOMPARE(manager.taps->size(), 2);
}

void RefreshAllTest::holdsItsCommandsBackAsLongAsIsWished() {
    const FakeBrew brew;
    brew.setBody(brew.recordArguments() +
                 LoadCase::answers(brew, [](const LoadCase&) { return ""; }));
    BrewManager manager(brewAt(brew));
    QPromise<void> start;
    start.start();
    manager.holdLoadCommands(start.future());

    const auto task = manager.refreshAll();
    for (const LoadCase& row : LoadCase::all())
        QVERIFY(*(manager.*row.flag));
    // What is no load is not held back. It takes as long as a load that weren't either.
    for (int i = 0; i < 3; ++i)
        QCoro::waitFor(manager.doctor());
    QCOMPARE(brew.recordedRuns(), QList<QStringList>(3, {u"doctor"_s}));

    start.finish();
    QTRY_VERIFY(task.isReady());
    QVERIFY(!isLoadingAnything(manager));
    QCOMPARE(brew.recordedRuns().size(), 3 + 4);
    QCOMPARE(manager.taps->size(), 2);
    QCoro::waitFor(manager.loadTaps());
    QCOMPARE(brew.recordedRuns().size(), 3 + 4 + 1);
}

void RefreshAllTest::startsNothingThatIsHeldBackOnceTheManagerIsGone() {
    const FakeBrew brew;
    brew.setBody(brew.recordArguments());
    QPromise<void> start;
    start.start();
    auto manager = std::make_unique<BrewManager>(brewAt(brew));
    manager->holdLoadCommands(start.future());
    const auto task = manager->refreshAll();
    manager.reset();
    start.finish();
    QTRY_VERIFY(task.isReady());
    BrewManager another(brewAt(brew));
    QCoro::waitFor(another.doctor());
    QCOMPARE(brew.recordedRuns(), QList<QStringList>{{u"doctor"_s}});
}

QTEST_GUILESS_MAIN(RefreshAllTest)
#include "tst_refreshall.moc"
