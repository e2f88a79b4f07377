// SPDX-License-Identifier: MIT
#include "AutoUpdater.h"
#include "FreshHome.h"
#include "LangManager.h"
#include "RecordedAlerts.h"
#include "ReleaseServer.h"
#include "SampleBundle.h"

#include <QElapsedTimer>
#include <QSettings>
#include <QtTest>

#include <array>
#include <iterator>

using namespace Qt::StringLiterals;

using Alert = UpdateAlerts::Alert;

class AfterLaunchTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void tellsOfAnUpdateOnceAndThenChecks();
    void tellsInTheLanguageOfThatMoment();
    void takesOnlyATextForAVersion();
    void doesNothingOnceItIsGone();
    void doesNothingWithoutABundle();

private:
    void storeVersion(const QVariant& version) {
        QSettings().setValue(u"Lumora.updatedToVersion"_s, version);
    }

    /// An updater that starts later is through with its own check after the first one's time.
    void onlyALaterOneChecks() const {
        RecordedAlerts laterAlerts;
        AutoUpdater later(m_server.source(u"later"_s), ApplicationBundle(m_bundle.path()),
                          laterAlerts);
        later.checkAfterLaunch();
        QTRY_COMPARE(m_server.requestsFor(ReleaseServer::latestPath(u"later"_s)), 1);
        QCOMPARE(m_server.requests().size(), 1);
        QVERIFY(m_alerts->shown().isEmpty());
    }

    FreshHome m_home;
    QTemporaryDir m_folder;
    ReleaseServer m_server;
    SampleBundle m_bundle{m_folder.filePath(u"Lumora.app"_s), u"0.2.0"_s};
    std::optional<RecordedAlerts> m_alerts;
    std::optional<AutoUpdater> m_updater;
};

namespace {

Alert notice(const QString& version) {
    return {.title = u"Update Complete"_s,
            .text = u"Updated to v"_s + version + u"."_s,
            .buttons = {u"OK"_s}};
}

bool isAbout(qint64 milliseconds, qint64 expected) {
    // The timers are coarse, the machine may be busy.
    return milliseconds > expected * 9 / 10 && milliseconds < expected + 900;
}

} // namespace

void AfterLaunchTest::init() {
    QSettings().clear();
    m_server.reset();
    m_alerts.emplace();
    m_updater.emplace(m_server.source(), ApplicationBundle(m_bundle.path()), *m_alerts);
}

void AfterLaunchTest::tellsOfAnUpdateOnceAndThenChecks() {
    m_server.offer(u"0.3.0"_s);
    storeVersion(u"0.2.0"_s);
    QElapsedTimer timer;
    timer.start();
    m_updater->checkAfterLaunch();
    // Taken at once: a launch that crashes doesn't tell again either.
    QVERIFY(!QSettings().contains(u"Lumora.updatedToVersion"_s));
    QVERIFY(m_alerts->shown().isEmpty());
    QTRY_COMPARE(m_alerts->shown(), QList{notice(u"0.2.0"_s)});
    const qint64 noticed = timer.elapsed();
    QVERIFY(m_server.requests().isEmpty());
    QTRY_COMPARE(m_server.requests().size(), 1);
    const qint64 checked = timer.elapsed();
    QTRY_COMPARE(m_alerts->shown().size(), 2);
    QCOMPARE(m_alerts->shown().last().title, u"New Version v0.3.0 Available"_s);
    QVERIFY2(isAbout(noticed, 1000), qPrintable(QString::number(noticed)));
    QVERIFY2(isAbout(checked, 3000), qPrintable(QString::number(checked)));

    RecordedAlerts nextAlerts;
    AutoUpdater nextLaunch(m_server.source(), ApplicationBundle(m_bundle.path()), nextAlerts);
    nextLaunch.checkAfterLaunch();
    QTRY_COMPARE(nextAlerts.shown().size(), 1);
    QCOMPARE(nextAlerts.shown().first().title, u"New Version v0.3.0 Available"_s);
}

void AfterLaunchTest::tellsInTheLanguageOfThatMoment() {
    storeVersion(u"0.2.0"_s);
    m_updater->checkAfterLaunch();
    LangManager::shared().setCurrent(Lang::ja);
    QTRY_COMPARE(m_alerts->shown().size(), 1);
    QCOMPARE(m_alerts->shown().first(), (Alert{.title = u"アップデート完了"_s,
                                               .text = u"v0.2.0にアップデートしました。"_s,
                                               .buttons = {u"OK"_s}}));
    LangManager::shared().setCurrent(Lang::en);
}

void AfterLaunchTest::takesOnlyATextForAVersion() {
    struct Launch final {
        QVariant stored;
        QList<Alert> told;
        RecordedAlerts alerts{};
        std::optional<AutoUpdater> updater{};
    };

    std::array<Launch, 4> launches{{
        {u"0.2.0"_s, {notice(u"0.2.0"_s)}},
        {u""_s, {notice({})}},
        {QStringList{u"0.2.0"_s, u"0.3.0"_s}, {}},
        {QByteArray("0.2.0"), {}},
    }};
    // All at once: each waits for three seconds.
    for (Launch& launch : launches) {
        QSettings().setValue(u"Lumora.updatedToVersion"_s, launch.stored);
        launch.updater.emplace(m_server.source(), ApplicationBundle(m_bundle.path()),
                               launch.alerts);
        launch.updater->checkAfterLaunch();
        QCOMPARE(QSettings().contains(u"Lumora.updatedToVersion"_s), launch.told.isEmpty());
    }
    // The notices come before the checks.
    QTRY_COMPARE(m_server.requests().size(), std::ssize(launches));
    for (const Launch& launch : launches)
        QCOMPARE(launch.alerts.shown(), launch.told);
}

void AfterLaunchTest::doesNothingOnceItIsGone() {
    m_server.offer(u"0.3.0"_s);
    storeVersion(u"0.2.0"_s);
    m_updater->checkAfterLaunch();
    m_updater.reset();
    onlyALaterOneChecks();
}

void AfterLaunchTest::doesNothingWithoutABundle() {
    m_server.offer(u"0.3.0"_s);
    storeVersion(u"0.2.0"_s);
    AutoUpdater installed(m_server.source(), std::nullopt, *m_alerts);
    installed.checkAfterLaunch();
    // What a bundle is told stays for the bundle.
    QCOMPARE(QSettings().value(u"Lumora.updatedToVersion"_s).toString(), u"0.2.0"_s);
    onlyALaterOneChecks();
}

QTEST_GUILESS_MAIN(AfterLaunchTest)
#include "tst_afterlaunch.moc"
