// SPDX-License-Identifier: MIT
#include "../core/DescriptorLimit.h"
#include "BrewAt.h"
#include "FreshHome.h"
#include "OperationCase.h"

#include <QtTest>

using namespace Qt::StringLiterals;

/// What an operation says of its beginning and its end, beside what it publishes.
class OperationReportTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tellsOfItsBeginning_data();
    void tellsOfItsBeginning();
    void tellsOfASuccess_data();
    void tellsOfASuccess();
    void tellsOfAFailure_data();
    void tellsOfAFailure();
    void tellsThatBrewCouldNotBeStarted_data();
    void tellsThatBrewCouldNotBeStarted();
    void comesWhenAllIsWrittenAndBeforeTheResult();
    void keepsTwoThatOverlapApart();
    void isNotGivenForAReport();

private:
    const FreshHome m_home;
};

namespace {

QString firstLine(const OperationCase& row) {
    return withName(row.startText, u"wget"_s).chopped(1);
}

QString lastLine(const QString& closing) {
    return withName(closing, u"wget"_s).mid(1);
}

/// The reports of a manager, in the order of their coming.
class Reports final {
public:
    explicit Reports(BrewManager& manager) : m_spy(&manager, &BrewManager::operationEnded) {}

    [[nodiscard]] qsizetype size() const { return m_spy.size(); }

    [[nodiscard]] OperationReport at(qsizetype index) const {
        return m_spy.value(index).value(0).value<OperationReport>();
    }

private:
    QSignalSpy m_spy;
};

} // namespace

void OperationReportTest::tellsOfItsBeginning_data() {
    OperationCase::addRows();
}

void OperationReportTest::tellsOfItsBeginning() {
    QFETCH(QString, operation);
    const OperationCase& row = OperationCase::named(operation);
    const FakeBrew brew;
    BrewManager manager(brewAt(brew));
    QStringList told;
    connect(&manager, &BrewManager::operationStarted, this, [&](const QString& start) {
        told = {start, *manager.operationOutput, *manager.isRunningOperation ? u"up"_s : u"down"_s};
    });
    const auto task = row.start(manager, u"wget"_s);
    QCOMPARE(told, (QStringList{firstLine(row), firstLine(row) + u'\n', u"up"_s}));
    QCoro::waitFor(row.start(manager, u"wget"_s));
}

void OperationReportTest::tellsOfASuccess_data() {
    OperationCase::addRows();
}

void OperationReportTest::tellsOfASuccess() {
    QFETCH(QString, operation);
    const OperationCase& row = OperationCase::named(operation);
    const FakeBrew brew;
    brew.setBody(brew.print("==> Pouring\n") + brew.printError("Warning: old\n"));
    BrewManager manager(brewAt(brew));
    const Reports reports(manager);

    QVERIFY(QCoro::waitFor(row.start(manager, u"wget"_s)));
    QCOMPARE(reports.size(), 1);
    QVERIFY(reports.at(0).succeeded);
    QCOMPARE(reports.at(0).start, firstLine(row));
    QCOMPARE(reports.at(0).closing, lastLine(row.successText));
    QCOMPARE(reports.at(0).transcript, *manager.operationOutput);
    // Of an output of many megabytes there is one copy.
    QCOMPARE(reports.at(0).transcript.constData(), manager.operationOutput->constData());
    QVERIFY(reports.at(0).transcript.contains(u"==> Pouring\n\nWarning: old\n"_s));
}

void OperationReportTest::tellsOfAFailure_data() {
    OperationCase::addRows();
}

void OperationReportTest::tellsOfAFailure() {
    QFETCH(QString, operation);
    const OperationCase& row = OperationCase::named(operation);
    const FakeBrew brew;
    brew.setBody(brew.printError("Error: no\n") + "exit 1");
    BrewManager manager(brewAt(brew));
    const Reports reports(manager);

    QVERIFY(!QCoro::waitFor(row.start(manager, u"wget"_s)));
    QCOMPARE(reports.size(), 1);
    QVERIFY(!reports.at(0).succeeded);
    QCOMPARE(reports.at(0).start, firstLine(row));
    QCOMPARE(reports.at(0).closing, lastLine(row.failureText));
    QCOMPARE(reports.at(0).transcript, *manager.operationOutput);
}

void OperationReportTest::tellsThatBrewCouldNotBeStarted_data() {
    OperationCase::addRows();
}

void OperationReportTest::tellsThatBrewCouldNotBeStarted() {
    QFETCH(QString, operation);
    const OperationCase& row = OperationCase::named(operation);
    const FakeBrew brew;
    BrewManager manager(brewAt(brew));
    const Reports reports(manager);
    {
        const DescriptorLimit none(0);
        QVERIFY(!QCoro::waitFor(row.start(manager, u"wget"_s)));
    }
    QCOMPARE(reports.size(), 1);
    QCOMPARE(reports.at(0), (OperationReport{.succeeded = false,
                                             .start = firstLine(row),
                                             .closing = {},
                                             .transcript = *manager.operationOutput}));
}

void OperationReportTest::comesWhenAllIsWrittenAndBeforeTheResult() {
    const FakeBrew brew;
    brew.setBody(brew.print("==> Pouring\n"));
    BrewManager manager(brewAt(brew));
    QStringList order;
    connect(&manager, &BrewManager::operationEnded, this, [&](const OperationReport& report) {
        order.append(*manager.isRunningOperation ? u"still running"_s : u"report"_s);
        order.append(report.transcript);
    });
    const auto task = manager.upgradeAll().then([&](bool) { order.append(u"result"_s); });
    QTRY_COMPARE(order.size(), 3);
    QCOMPARE(order,
             (QStringList{u"report"_s,
                          u"Upgrading all packages...\n==> Pouring\n\nAll packages upgraded"_s,
                          u"result"_s}));
}

void OperationReportTest::keepsTwoThatOverlapApart() {
    const FakeBrew brew;
    brew.setBody(brew.waitFor(u"$2"_s) + "echo $2\n[ $2 != bad ]\n");
    BrewManager manager(brewAt(brew));
    const Reports reports(manager);
    const auto bad = manager.install(u"bad"_s, PackageType::formula);
    const auto good = manager.install(u"good"_s, PackageType::formula);
    brew.open(u"good"_s);
    QTRY_COMPARE(reports.size(), 1);
    brew.open(u"bad"_s);
    QTRY_COMPARE(reports.size(), 2);
    QCOMPARE(reports.at(0).transcript,
             u"Installing good...\ngood\n\nSuccessfully installed good"_s);
    QCOMPARE(reports.at(1).transcript, u"Installing bad...\nbad\n\nFailed to install bad"_s);
}

void OperationReportTest::isNotGivenForAReport() {
    const FakeBrew brew("exit 1");
    BrewManager manager(brewAt(brew));
    const Reports reports(manager);
    QSignalSpy started(&manager, &BrewManager::operationStarted);
    QCoro::waitFor(manager.doctor());
    QCoro::waitFor(manager.cleanup());
    QCoro::waitFor(manager.loadTaps());
    QCOMPARE(reports.size(), 0);
    QCOMPARE(started.size(), 0);
}

QTEST_GUILESS_MAIN(OperationReportTest)
#include "tst_operationreport.moc"
