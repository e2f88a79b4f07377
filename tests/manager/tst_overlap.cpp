// SPDX-License-Identifier: MIT
#include "BrewAt.h"
#include "BrewManager.h"
#include "FreshHome.h"
#include "Lines.h"
#include "LoadCase.h"
#include "PublicationRecorder.h"

#include <QtTest>

using namespace Qt::StringLiterals;

/// Two of a kind at once: neither waits for the other, and the one that ends last has the
/// last word.
class OverlapTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void twoLoadsThatEndInTheirOrder();
    void twoLoadsThatEndTheOtherWayRound();
    void aLoadThatFailsAfterOneThatSucceeded();
    void aLoadThatStartsAfterOneThatFailed();
    void twoSearches_data();
    void twoSearches();
    void aBlankQueryDuringASearch();
    void twoOperationsThatEndInTheirOrder();
    void twoOperationsThatEndTheOtherWayRound();
    void anOperationAndALoad();

private:
    const FreshHome m_home;
};

namespace {

/// Two loads of formulae that run at the same time, and end when the test says so.
class TwoLoads final {
public:
    /// What the first run of brew does before it ends, and what the second does.
    TwoLoads(const QByteArray& first, const QByteArray& second) {
        brew.setBody("cd " + brew.folder().toUtf8() + "\nif mkdir first 2>/dev/null; then\n" +
                     brew.waitFor(u"end-first"_s) + first + "\nelse\n" +
                     brew.waitFor(u"end-second"_s) + second + "\nfi\n");
        m_first = manager.loadFormulae();
        m_areRunning = QTest::qWaitFor([this] { return brew.hasReached(u"first"_s); });
        m_second = manager.loadFormulae();
    }

    /// Whether a load ended, and it alone, when its command was let go on.
    [[nodiscard]] bool endFirst() { return m_areRunning && end(u"end-first"_s, m_first, m_second); }

    [[nodiscard]] bool endSecond() {
        return m_areRunning && end(u"end-second"_s, m_second, m_first);
    }

    const FakeBrew brew;
    BrewManager manager{brewAt(brew)};
    const PublicationRecorder recorder{manager};

private:
    [[nodiscard]] bool end(const QString& gate, const QCoro::Task<>& load,
                           const QCoro::Task<>& other) {
        const bool otherHadEnded = other.isReady();
        brew.open(gate);
        return QTest::qWaitFor([&] { return load.isReady(); }) && other.isReady() == otherHadEnded;
    }

    QCoro::Task<> m_first;
    QCoro::Task<> m_second;
    bool m_areRunning{};
};

/// Script lines that print a report with one formula.
QByteArray printFormula(const QByteArray& name) {
    return "echo '" + formulaeReport({name}) + '\'';
}

/// A script that waits at a gate named by its last argument and then prints it.
QByteArray echoingAtAGate(const FakeBrew& brew) {
    return "for word; do gate=$word; done\n" + brew.waitFor(u"$gate"_s) +
           "echo $gate\n[ $gate != bad ]\n";
}

} // namespace

void OverlapTest::twoLoadsThatEndInTheirOrder() {
    TwoLoads loads(printFormula("first"), printFormula("second"));
    QVERIFY(loads.endFirst());
    QVERIFY(!*loads.manager.isLoadingFormulae);
    QVERIFY(loads.endSecond());
    QCOMPARE(loads.recorder.lines(), lines(uR"(
        announced: isLoadingFormulae = true
        announced: errorMessage = none
        announced: isLoadingFormulae = true
        announced: errorMessage = none
        announced: formulae = 1: "first"
        announced: isLoadingFormulae = false
        announced: formulae = 1: "second"
        announced: isLoadingFormulae = false
    )"_s));
}

void OverlapTest::twoLoadsThatEndTheOtherWayRound() {
    TwoLoads loads(printFormula("first"), printFormula("second"));
    QVERIFY(loads.endSecond());
    QVERIFY(loads.endFirst());
    QCOMPARE(loads.recorder.lines().sliced(4), lines(uR"(
        announced: formulae = 1: "second"
        announced: isLoadingFormulae = false
        announced: formulae = 1: "first"
        announced: isLoadingFormulae = false
    )"_s));
}

void OverlapTest::aLoadThatFailsAfterOneThatSucceeded() {
    TwoLoads loads("exit 1", printFormula("second"));
    QVERIFY(loads.endSecond());
    QVERIFY(loads.endFirst());
    QCOMPARE(loads.recorder.lines().sliced(4), lines(uR"(
        announced: formulae = 1: "second"
        announced: isLoadingFormulae = false
        announced: errorMessage = "brew info --installed --formula failed"
        announced: isLoadingFormulae = false
    )"_s));
}

void OverlapTest::aLoadThatStartsAfterOneThatFailed() {
    const FakeBrew brew("[ $1 = tap ] && echo user/tools");
    BrewManager manager(brewAt(brew));
    const PublicationRecorder recorder(manager);
    QCoro::waitFor(manager.loadFormulae());
    QCoro::waitFor(manager.loadTaps());
    QCOMPARE(recorder.lines(), lines(uR"(
        announced: isLoadingFormulae = true
        announced: errorMessage = none
        announced: errorMessage = "brew info --installed --formula failed"
        announced: isLoadingFormulae = false
        announced: isLoadingTaps = true
        announced: errorMessage = none
        announced: taps = 1: "user/tools"
        announced: isLoadingTaps = false
    )"_s));
}

void OverlapTest::twoSearches_data() {
    QTest::addColumn<QStringList>("ends");
    QTest::newRow("in their order") << QStringList{u"first"_s, u"second"_s};
    QTest::newRow("the other way round") << QStringList{u"second"_s, u"first"_s};
}

void OverlapTest::twoSearches() {
    QFETCH(QStringList, ends);
    const FakeBrew brew;
    brew.setBody(echoingAtAGate(brew));
    BrewManager manager(brewAt(brew));
    std::map<QString, QCoro::Task<>> searches;
    searches.emplace(u"first"_s, manager.search(u"first"_s));
    searches.emplace(u"second"_s, manager.search(u"second"_s));
    const PublicationRecorder recorder(manager);

    QStringList expected;
    for (const QString& end : ends) {
        brew.open(end);
        QTRY_VERIFY(searches[end].isReady());
        QVERIFY(!*manager.isSearching);
        expected += {uR"(announced: searchResults = 1: "%1")"_s.arg(end),
                     u"announced: isSearching = false"_s};
        QCOMPARE(recorder.lines(), expected);
    }
}

void OverlapTest::aBlankQueryDuringASearch() {
    const FakeBrew brew;
    brew.setBody(echoingAtAGate(brew));
    BrewManager manager(brewAt(brew));
    const auto search = manager.search(u"word"_s);
    const PublicationRecorder recorder(manager);
    const auto blank = manager.search(u" "_s);
    QVERIFY(blank.isReady());
    QVERIFY(*manager.isSearching);
    brew.open(u"word"_s);
    QTRY_VERIFY(search.isReady());
    QCOMPARE(recorder.lines(), lines(uR"(
        announced: searchResults = 0
        announced: searchResults = 1: "word"
        announced: isSearching = false
    )"_s));
}

void OverlapTest::twoOperationsThatEndInTheirOrder() {
    const FakeBrew brew;
    brew.setBody(echoingAtAGate(brew));
    BrewManager manager(brewAt(brew));
    const PublicationRecorder recorder(manager);

    auto first = manager.install(u"first"_s, PackageType::formula);
    auto second = manager.uninstall(u"bad"_s, PackageType::cask);
    brew.open(u"first"_s);
    QTRY_VERIFY(first.isReady());
    QVERIFY(!second.isReady());
    brew.open(u"bad"_s);
    QTRY_VERIFY(second.isReady());
    QVERIFY(QCoro::waitFor(std::move(first)));
    QVERIFY(!QCoro::waitFor(std::move(second)));
    QCOMPARE(recorder.lines(), lines(uR"(
        announced: isRunningOperation = true
        announced: operationOutput = "Installing first...\n"
        announced: isRunningOperation = true
        announced: operationOutput = "Uninstalling bad...\n"
        announced: operationOutput = "Uninstalling bad...\nfirst\n"
        announced: isRunningOperation = false
        announced: operationOutput = "Uninstalling bad...\nfirst\n\nSuccessfully installed first"
        announced: operationOutput = "Uninstalling bad...\nfirst\n\nSuccessfully installed firstbad\n"
        announced: isRunningOperation = false
        announced: operationOutput = "Uninstalling bad...\nfirst\n\nSuccessfully installed firstbad\n\nFailed to uninstall bad"
    )"_s));
}

void OverlapTest::twoOperationsThatEndTheOtherWayRound() {
    const FakeBrew brew;
    brew.setBody(echoingAtAGate(brew));
    BrewManager manager(brewAt(brew));

    const auto first = manager.upgrade(u"first"_s, PackageType::formula);
    const auto second = manager.addTap(u"second"_s);
    const PublicationRecorder recorder(manager);
    brew.open(u"second"_s);
    QTRY_VERIFY(second.isReady());
    QVERIFY(!first.isReady());
    brew.open(u"first"_s);
    QTRY_VERIFY(first.isReady());
    QCOMPARE(recorder.lines(), lines(uR"(
        announced: operationOutput = "Adding tap second...\nsecond\n"
        announced: isRunningOperation = false
        announced: operationOutput = "Adding tap second...\nsecond\nfirst\n"
        announced: isRunningOperation = false
        announced: operationOutput = "Adding tap second...\nsecond\nfirst\n\nSuccessfully upgraded first"
    )"_s));
}

void OverlapTest::anOperationAndALoad() {
    const FakeBrew brew;
    brew.setBody(echoingAtAGate(brew));
    BrewManager manager(brewAt(brew));

    const auto operation = manager.addTap(u"added"_s);
    const auto load = manager.loadTaps();
    const PublicationRecorder recorder(manager);
    brew.open(u"tap"_s);
    QTRY_VERIFY(load.isReady());
    QVERIFY(*manager.isRunningOperation);
    brew.open(u"added"_s);
    QTRY_VERIFY(operation.isReady());
    QCOMPARE(recorder.lines(), lines(uR"(
        announced: taps = 1: "tap"
        announced: isLoadingTaps = false
        announced: operationOutput = "Adding tap added...\nadded\n"
        announced: isRunningOperation = false
    )"_s));
}

QTEST_GUILESS_MAIN(OverlapTest)
#include "tst_overlap.moc"
