// SPDX-License-Identifier: MIT
#include "../core/DescriptorLimit.h"
#include "BrewManager.h"
#include "DesktopServiceDouble.h"
#include "ScriptedBrew.h"
#include "UiTest.h"
#include "shell/SleepInhibitor.h"

#include <optional>

using namespace Qt::StringLiterals;
using enum DesktopServiceDouble::Manner;

namespace {

/// GNOME's, and the one that KDE and Xfce have.
struct SessionManager final {
    explicit SessionManager(const SessionBus& bus, DesktopServiceDouble::Manner manner = Answers)
        : service(bus, u"org.gnome.SessionManager"_s, u"/org/gnome/SessionManager"_s, manner) {}

    DesktopServiceDouble service;
};

struct PowerManagement final {
    explicit PowerManagement(const SessionBus& bus, DesktopServiceDouble::Manner manner = Answers)
        : service(bus, u"org.freedesktop.PowerManagement"_s,
                  u"/org/freedesktop/PowerManagement/Inhibit"_s, manner) {}

    DesktopServiceDouble service;
};

QString inhibitFor(const QString& name) {
    return u"Inhibit (susu) 'lumora' '0' 'Installing "_s + name + u"...' '4'"_s;
}

} // namespace

class SleepInhibitorTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void asksWithTheFirstOperationAndReleasesWithTheLast_data();
    void asksWithTheFirstOperationAndReleasesWithTheLast();
    void asksAnewForTheNextOperation();
    void asksThePowerManagementWhereThereIsNoSessionManager_data();
    void asksThePowerManagementWhereThereIsNoSessionManager();
    void worksWhereNobodyKeepsAwake_data();
    void worksWhereNobodyKeepsAwake();
    void releasesNothingTwice();
    void releasesWhatIsGrantedTooLate();
    void asksNobodyElseWhenRefusedTooLate();
    void keepsALateGrantApartFromThePresentOne();
    void releasesWhenBrewCannotBeStarted();
    void givesAHarmlessReason_data();
    void givesAHarmlessReason();

private:
    /// Starts an operation that runs until its name is released.
    void install(const QString& name) {
        m_brew->hold(u"install "_s + name);
        m_operations[name] = m_manager->install(name, PackageType::formula);
    }

    [[nodiscard]] bool finish(const QString& name) {
        m_brew->release(u"install "_s + name);
        return QTest::qWaitFor([&] { return m_operations[name]->isReady(); });
    }

    const SessionBus m_bus;
    std::optional<ScriptedBrew> m_brew;
    std::optional<BrewManager> m_manager;
    std::optional<SleepInhibitor> m_inhibitor;
    std::map<QString, std::optional<QCoro::Task<bool>>> m_operations;
};

void SleepInhibitorTest::initTestCase() {
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
}

void SleepInhibitorTest::init() {
    m_brew.emplace();
    m_manager.emplace(m_brew->discovery());
    m_inhibitor.emplace(*m_manager);
}

void SleepInhibitorTest::cleanup() {
    m_operations.clear();
    m_inhibitor.reset();
    m_manager.reset();
    m_brew.reset();
}

void SleepInhibitorTest::asksWithTheFirstOperationAndReleasesWithTheLast_data() {
    QTest::addColumn<QStringList>("ends");
    QTest::newRow("the first ends first") << QStringList{u"wget"_s, u"jq"_s};
    QTest::newRow("the first ends last") << QStringList{u"jq"_s, u"wget"_s};
}

void SleepInhibitorTest::asksWithTheFirstOperationAndReleasesWithTheLast() {
    QFETCH(const QStringList, ends);
    const SessionManager session(m_bus);
    const PowerManagement power(m_bus);
    install(u"wget"_s);
    QTRY_COMPARE(session.service.calls(), QStringList{inhibitFor(u"wget"_s)});
    install(u"jq"_s);
    QVERIFY(finish(ends.first()));
    session.service.settle();
    QCOMPARE(session.service.calls().size(), 1);
    QVERIFY(finish(ends.last()));
    QTRY_COMPARE(session.service.calls().value(1), u"Uninhibit (u) '1'"_s);
    session.service.settle();
    QCOMPARE(session.service.calls().size(), 2);
    power.service.settle();
    QCOMPARE(power.service.calls(), QStringList());
}

void SleepInhibitorTest::asksAnewForTheNextOperation() {
    const SessionManager session(m_bus);
    for (const QString& name : {u"wget"_s, u"jq"_s}) {
        const qsizetype before = session.service.calls().size();
        install(name);
        QTRY_COMPARE(session.service.calls().value(before), inhibitFor(name));
        // The answer has to be on its way before the operation ends.
        session.service.settle();
        QVERIFY(finish(name));
        QTRY_COMPARE(session.service.calls().size(), before + 2);
    }
    QCOMPARE(session.service.calls().at(1), u"Uninhibit (u) '1'"_s);
    // The double's numbers go on with each answer.
    QCOMPARE(session.service.calls().at(3), u"Uninhibit (u) '3'"_s);
}

void SleepInhibitorTest::asksThePowerManagementWhereThereIsNoSessionManager_data() {
    QTest::addColumn<bool>("refuses");
    QTest::newRow("absent") << false;
    QTest::newRow("refuses") << true;
}

void SleepInhibitorTest::asksThePowerManagementWhereThereIsNoSessionManager() {
    QFETCH(const bool, refuses);
    std::optional<SessionManager> session;
    if (refuses)
        session.emplace(m_bus, Refuses);
    const PowerManagement power(m_bus);
    install(u"wget"_s);
    QTRY_COMPARE(power.service.calls(),
                 QStringList{u"Inhibit (ss) 'Lumora' 'Installing wget...'"_s});
    QVERIFY(finish(u"wget"_s));
    QTRY_COMPARE(power.service.calls().value(1), u"UnInhibit (u) '1'"_s);
    if (refuses)
        QCOMPARE(session->service.calls(), QStringList{inhibitFor(u"wget"_s)});
}

void SleepInhibitorTest::worksWhereNobodyKeepsAwake_data() {
    QTest::addColumn<bool>("isAnybodyThere");
    QTest::newRow("absent") << false;
    QTest::newRow("refuse") << true;
}

void SleepInhibitorTest::worksWhereNobodyKeepsAwake() {
    QFETCH(const bool, isAnybodyThere);
    {
        std::optional<SessionManager> session;
        std::optional<PowerManagement> power;
        if (isAnybodyThere) {
            session.emplace(m_bus, Refuses);
            power.emplace(m_bus, Refuses);
        }
        install(u"wget"_s);
        if (isAnybodyThere)
            QTRY_COMPARE(power->service.calls().size(), 1);
        QVERIFY(finish(u"wget"_s));
        QVERIFY(m_operations[u"wget"_s]->isReady());
        if (isAnybodyThere) {
            session->service.settle();
            QCOMPARE(session->service.calls().size(), 1);
            QCOMPARE(power->service.calls().size(), 1);
        }
    }
    const SessionManager session(m_bus);
    install(u"jq"_s);
    QTRY_COMPARE(session.service.calls(), QStringList{inhibitFor(u"jq"_s)});
    QVERIFY(finish(u"jq"_s));
}

void SleepInhibitorTest::releasesNothingTwice() {
    SessionManager session(m_bus);
    install(u"wget"_s);
    QTRY_COMPARE(session.service.calls().size(), 1);
    session.service.settle();
    QVERIFY(finish(u"wget"_s));
    QTRY_COMPARE(session.service.calls().size(), 2);
    session.service.setManner(Refuses);
    install(u"jq"_s);
    QTRY_COMPARE(session.service.calls().size(), 3);
    QVERIFY(finish(u"jq"_s));
    session.service.settle();
    QCOMPARE(session.service.calls().size(), 3);
}

void SleepInhibitorTest::releasesWhatIsGrantedTooLate() {
    SessionManager session(m_bus, KeepsSilent);
    install(u"wget"_s);
    QTRY_COMPARE(session.service.calls(), QStringList{inhibitFor(u"wget"_s)});
    QVERIFY(finish(u"wget"_s));
    session.service.settle();
    QCOMPARE(session.service.calls().size(), 1);
    session.service.breakSilence();
    QTRY_COMPARE(session.service.calls().value(1), u"Uninhibit (u) '1'"_s);
}

void SleepInhibitorTest::asksNobodyElseWhenRefusedTooLate() {
    std::optional<SessionManager> session(std::in_place, m_bus, KeepsSilent);
    const PowerManagement power(m_bus);
    install(u"wget"_s);
    QTRY_COMPARE(session->service.calls().size(), 1);
    QVERIFY(finish(u"wget"_s));
    // Its name vanishes with all that it owes.
    session.reset();
    power.service.settle();
    install(u"jq"_s);
    QTRY_COMPARE(power.service.calls(), QStringList{u"Inhibit (ss) 'Lumora' 'Installing jq...'"_s});
    QVERIFY(finish(u"jq"_s));
}

void SleepInhibitorTest::keepsALateGrantApartFromThePresentOne() {
    SessionManager session(m_bus, KeepsSilent);
    install(u"wget"_s);
    QTRY_COMPARE(session.service.calls().size(), 1);
    QVERIFY(finish(u"wget"_s));
    install(u"jq"_s);
    QTRY_COMPARE(session.service.calls().value(1), inhibitFor(u"jq"_s));
    session.service.breakSilence();
    QTRY_COMPARE(session.service.calls().value(2), u"Uninhibit (u) '1'"_s);
    session.service.settle();
    QCOMPARE(session.service.calls().size(), 3);
    QVERIFY(finish(u"jq"_s));
    QTRY_COMPARE(session.service.calls().value(3), u"Uninhibit (u) '2'"_s);
}

void SleepInhibitorTest::releasesWhenBrewCannotBeStarted() {
    const SessionManager session(m_bus);
    install(u"wget"_s);
    QVERIFY(finish(u"wget"_s));
    QTRY_COMPARE(session.service.calls().size(), 2);
    {
        const DescriptorLimit none(0);
        const auto failing = m_manager->install(u"jq"_s, PackageType::formula);
        QTRY_VERIFY(failing.isReady());
    }
    QVERIFY2(m_manager->operationOutput->contains(u"Error: "_s),
             qUtf8Printable(*m_manager->operationOutput));
    QTRY_COMPARE(session.service.calls().size(), 4);
    QCOMPARE(session.service.calls().at(2), inhibitFor(u"jq"_s));
    QVERIFY(session.service.calls().at(3).startsWith(u"Uninhibit"_s));
}

void SleepInhibitorTest::givesAHarmlessReason_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("markup and percent") << u"<b>a</b> &amp; %1"_s << u"<b>a</b> &amp; %1"_s;
    QTest::newRow("control characters") << u"a\n\x1b[31m"_s + QChar(0) << u"a \u241b[31m\u2400"_s;
    QTest::newRow("right to left") << u"a\u202egpj.exe"_s << u"a\ufffdgpj.exe"_s;
    QTest::newRow("half a character") << u"a"_s + QChar(0xD83D) << u"a?"_s;
}

void SleepInhibitorTest::givesAHarmlessReason() {
    QFETCH(const QString, name);
    QFETCH(const QString, shown);
    const SessionManager session(m_bus);
    const auto operation = m_manager->install(name, PackageType::formula);
    QTRY_VERIFY(!session.service.calls().isEmpty());
    QCOMPARE(session.service.calls().first(), inhibitFor(shown));
    QTRY_VERIFY(operation.isReady());
}

LUMORA_UI_TEST_MAIN(SleepInhibitorTest)
#include "tst_sleepinhibitor.moc"
