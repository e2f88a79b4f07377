// SPDX-License-Identifier: MIT
#include "BrewAt.h"
#include "FreshHome.h"
#include "LoadCase.h"
#include "OperationCase.h"
#include "PackageNamed.h"
#include "PublicationRecorder.h"

#include <QPointer>
#include <QtTest>

using namespace Qt::StringLiterals;

/// Tasks, callers and managers that go before the command they wait for has ended.
class LifetimeTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void discardedTasksStillEnd();
    void aCallerMayDieWhileItWaits();
    void aManagerMayDieDuringALoad_data();
    void aManagerMayDieDuringALoad();
    void aManagerMayDieDuringASearch();
    void aManagerMayDieDuringAnOperation_data();
    void aManagerMayDieDuringAnOperation();
    void aManagerMayDieDuringAReport();
    void aManagerMayDieWithItsTasksDiscarded();

private:
    const FreshHome m_home;
};

namespace {

/// A manager that can be destroyed while its command waits for destroyAndEnd().
class Doomed final {
public:
    explicit Doomed(const QByteArray& ending = {}) {
        m_brew.setBody(m_brew.recordArguments() + m_brew.waitFor(u"go"_s) + ending);
        m_manager = std::make_unique<BrewManager>(brewAt(m_brew));
        m_recorder = std::make_unique<PublicationRecorder>(*m_manager);
    }

    [[nodiscard]] BrewManager& manager() { return *m_manager; }

    [[nodiscard]] bool isRunning(int commands) const {
        return m_brew.recordedRuns().size() == commands;
    }

    void destroyAndEnd() {
        m_recorder->forget();
        m_manager.reset();
        m_brew.open(u"go"_s);
    }

    /// What has been published since.
    [[nodiscard]] QStringList recorded() const { return m_recorder->lines(); }

private:
    FakeBrew m_brew;
    std::unique_ptr<BrewManager> m_manager;
    std::unique_ptr<PublicationRecorder> m_recorder;
};

/// Upgrades, reloads and notes the result, as a page does.
class Caller final : public QObject {
public:
    explicit Caller(QStringList& notes) : m_notes(notes) {}

    QCoro::Task<> upgrade(BrewManager* manager) {
        const QPointer<Caller> self(this);
        QStringList& notes = m_notes;
        const bool succeeded = co_await manager->upgrade(m_package, PackageType::formula);
        notes.append(succeeded ? u"upgraded"_s : u"failed"_s);
        co_await manager->loadTaps();
        notes.append(u"reloaded"_s);
        if (self)
            notes.append(self->m_package);
    }

private:
    QStringList& m_notes;
    const QString m_package{u"wget"_s};
};

} // namespace

void LifetimeTest::discardedTasksStillEnd() {
    const FakeBrew brew;
    brew.setBody(brew.recordArguments() + brew.waitFor(u"go"_s) + LoadCase::answers(brew) +
                 "[ \"$1\" != search ] || echo hit");
    BrewManager manager(brewAt(brew));
    manager.refreshAll();
    manager.search(u"x"_s);
    manager.install(u"wget"_s, PackageType::formula);
    manager.doctor();
    QTRY_COMPARE(brew.recordedRuns().size(), 7);

    brew.open(u"go"_s);
    QTRY_COMPARE(*manager.operationOutput, u"Installing wget...\n\nSuccessfully installed wget"_s);
    for (const LoadCase& row : LoadCase::all())
        QTRY_VERIFY(!*(manager.*row.flag));
    QCOMPARE(manager.formulae->size(), 2);
    QCOMPARE(manager.casks->size(), 2);
    QCOMPARE(manager.outdatedCasks->size(), 1);
    QCOMPARE(manager.taps->size(), 2);
    QTRY_COMPARE(manager.searchResults->size(), 1);
}

void LifetimeTest::aCallerMayDieWhileItWaits() {
    const FakeBrew brew;
    brew.setBody(brew.recordArguments() + brew.waitFor(u"go"_s));
    BrewManager manager(brewAt(brew));
    QStringList notes;
    auto caller = std::make_unique<Caller>(notes);
    caller->upgrade(&manager);
    QTRY_COMPARE(brew.recordedRuns().size(), 1);

    caller.reset();
    brew.open(u"go"_s);
    QTRY_COMPARE(notes, (QStringList{u"upgraded"_s, u"reloaded"_s}));
    QCOMPARE(brew.recordedRuns(), (QList<QStringList>{{u"upgrade"_s, u"wget"_s}, {u"tap"_s}}));
    QVERIFY(!*manager.isRunningOperation);
    QVERIFY(!*manager.isLoadingTaps);
}

void LifetimeTest::aManagerMayDieDuringALoad_data() {
    QTest::addColumn<QString>("load");
    QTest::addColumn<QByteArray>("ending");
    const FakeBrew brew;
    for (const LoadCase& row : LoadCase::all()) {
        // Every load can read this, in its own way.
        QTest::addRow("%s: success", qUtf8Printable(row.name))
            << row.name << QByteArray(R"(echo '{"formulae":[],"casks":[]}')");
        QTest::addRow("%s: broken report", qUtf8Printable(row.name))
            << row.name << QByteArray("echo nonsense");
        QTest::addRow("%s: failure", qUtf8Printable(row.name)) << row.name << QByteArray("exit 1");
    }
}

void LifetimeTest::aManagerMayDieDuringALoad() {
    QFETCH(QString, load);
    QFETCH(QByteArray, ending);
    Doomed doomed(ending);
    const auto task = (doomed.manager().*LoadCase::named(load).load)();
    const auto all = doomed.manager().refreshAll();
    QTRY_VERIFY(doomed.isRunning(5));
    doomed.destroyAndEnd();
    QTRY_VERIFY(task.isReady() && all.isReady());
    QCOMPARE(doomed.recorded(), QStringList());
}

void LifetimeTest::aManagerMayDieDuringASearch() {
    Doomed doomed("echo hit");
    doomed.manager().formulae.set({packageNamed(u"hit"_s)});
    const auto task = doomed.manager().search(u"x"_s);
    QTRY_VERIFY(doomed.isRunning(1));
    doomed.destroyAndEnd();
    QTRY_VERIFY(task.isReady());
    QCOMPARE(doomed.recorded(), QStringList());
}

void LifetimeTest::aManagerMayDieDuringAnOperation_data() {
    OperationCase::addRows();
}

void LifetimeTest::aManagerMayDieDuringAnOperation() {
    QFETCH(QString, operation);
    Doomed doomed("echo out; echo err >&2");
    auto task = OperationCase::named(operation).start(doomed.manager(), u"wget"_s);
    QTRY_VERIFY(doomed.isRunning(1));
    doomed.destroyAndEnd();
    QTRY_VERIFY(task.isReady());
    QVERIFY(!QCoro::waitFor(std::move(task)));
    QCOMPARE(doomed.recorded(), QStringList());
}

void LifetimeTest::aManagerMayDieDuringAReport() {
    Doomed doomed("echo out; echo err >&2");
    auto info = doomed.manager().getPackageInfo(u"wget"_s, PackageType::cask);
    auto doctor = doomed.manager().doctor();
    QTRY_VERIFY(doomed.isRunning(2));
    doomed.destroyAndEnd();
    QTRY_VERIFY(info.isReady() && doctor.isReady());
    QCOMPARE(QCoro::waitFor(std::move(info)), u"out\n"_s);
    QCOMPARE(QCoro::waitFor(std::move(doctor)), u"out\n\nerr\n"_s);
}

void LifetimeTest::aManagerMayDieWithItsTasksDiscarded() {
    QStringList notes;
    Doomed doomed("echo out");
    doomed.manager().refreshAll();
    doomed.manager().search(u"x"_s);
    doomed.manager().doctor().then([&](const QString& text) { notes.append(text); });
    doomed.manager().upgradeAll().then(
        [&](bool result) { notes.append(result ? u"true"_s : u"false"_s); });
    QTRY_VERIFY(doomed.isRunning(7));
    doomed.destroyAndEnd();
    QTRY_COMPARE(notes.size(), 2);
    notes.sort();
    QCOMPARE(notes, (QStringList{u"false"_s, u"out\n"_s}));
    QCOMPARE(doomed.recorded(), QStringList());
}

QTEST_GUILESS_MAIN(LifetimeTest)
#include "tst_lifetime.moc"
