// SPDX-License-Identifier: MIT
#include "ChangedVariable.h"
#include "FreshHome.h"
#include "UpdateScene.h"
#include "UpdateScript.h"

#include <QCoroFuture>
#include <QDir>
#include <QProcess>
#include <QPromise>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

class InstallationTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void installsWhatTheUserAgreesTo();
    void doesNothingLater();
    void keepsTheVersionBeforeItDownloads();
    void leavesAScriptThatWaits();
    void leavesAScriptThatNobodyHangsUpOn();
    void replacesWhatAnEarlierAttemptHasLeft();
    void acceptsPlainVersions_data();
    void acceptsPlainVersions();
    void followsAllowedRedirects();
    void givesUpWhenTheApplicationEndsBeforeTheAnswer();
    void givesUpWhenTheApplicationEndsDuringTheDownload_data();
    void givesUpWhenTheApplicationEndsDuringTheDownload();
    void startsNoScriptOnceTheApplicationHasEnded();
    void keepsItsHandsOffFilesItDoesNotKnow();
    void installsOnlyOnceAtATime();
    void refusesWhileAnotherInstalls();
    void refusesWhileAScriptIsAtWork();
    void triesAgainAfterAFailure();
    void claimsNothingAfterASwapThatFailed();

private:
    FreshHome m_home;
    ReleaseServer m_server;
};

namespace {

/// An application that goes on running: the script waits for it.
class RunningApplication final {
public:
    explicit RunningApplication(const UpdateScene& scene) {
        const QString program = scene.path(u"Lumora"_s);
        if (!QFile::copy(u"/bin/sh"_s, program))
            qFatal("No shell could be copied");
        m_process.start(program, {u"-c"_s, u"read line"_s});
        if (!m_process.waitForStarted())
            qFatal("The copied shell could not be started");
    }

    ~RunningApplication() { end(); }

    void end() {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
};

/// Lets every alert wait.
class SlowUser final : public UpdateAlerts {
public:
    SlowUser() { m_answer.start(); }

    QCoro::Task<qsizetype> show(Alert) override {
        m_isAsked = true;
        const qsizetype answer = co_await m_answer.future();
        m_isThrough = true;
        co_return answer;
    }

    void answer(qsizetype button) {
        m_answer.addResult(button);
        m_answer.finish();
    }

    [[nodiscard]] bool isAsked() const { return m_isAsked; }

    [[nodiscard]] bool isThrough() const { return m_isThrough; }

private:
    QPromise<qsizetype> m_answer;
    bool m_isAsked{false};
    bool m_isThrough{false};
};

/// Another window on the same bundle, whose user agrees to every update.
class SecondWindow final {
public:
    explicit SecondWindow(const UpdateScene& scene, const ReleaseServer& server)
        : m_updater(server.source(), ApplicationBundle(scene.bundle().path()), m_alerts),
          m_terminations(&m_updater, &AutoUpdater::terminationRequested) {}

    [[nodiscard]] AutoUpdater& updater() { return m_updater; }

    [[nodiscard]] bool isAskedToEnd() const { return !m_terminations.isEmpty(); }

    /// What it has told besides its offer.
    [[nodiscard]] QStringList told() const {
        QStringList texts;
        for (const UpdateAlerts::Alert& alert : m_alerts.shown().sliced(1))
            texts.append(alert.text);
        return texts;
    }

    [[nodiscard]] bool hasTold() const { return m_alerts.shown().size() > 1; }

private:
    RecordedAlerts m_alerts{RecordedAlerts::Answer::UpdateNow};
    AutoUpdater m_updater;
    QSignalSpy m_terminations;
};

/// The process whose command line fits; 0 if there is none. The path's pgrep wouldn't see it.
pid_t processRunning(const QString& pattern) {
    QProcess pgrep;
    pgrep.start(u"/usr/bin/pgrep"_s, {u"-f"_s, pattern});
    pgrep.waitForFinished();
    return pgrep.readAll().trimmed().toInt();
}

/// The script's process; 0 if it doesn't come. Asked once each time: what runs now may not run
/// when it is asked again.
pid_t awaitScript(const UpdateScene& scene) {
    const QString pattern = u"^/bin/bash "_s + scene.updateFile(u"lumora-update.sh"_s);
    pid_t process = 0;
    (void)QTest::qWaitFor([&] { return (process = processRunning(pattern)) > 0; },
                          UpdateScene::patience);
    return process;
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

void InstallationTest::installsWhatTheUserAgreesTo() {
    UpdateScene scene(m_server);
    scene.offerArchive();
    scene.updater().checkForUpdatesManually();
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isAskedToEnd(), scene.description(), UpdateScene::patience);
    QCOMPARE(scene.alerts().shown().size(), 1);
    QCOMPARE(scene.alerts().shown().first().title, u"New Version v0.2.0 Available"_s);
    QCOMPARE(UpdateScene::storedVersion(), u"0.2.0"_s);
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isSwapDone(), scene.description(), UpdateScene::patience);
    QCOMPARE(SampleBundle::startedVersion(scene.bundle().path()), u"0.2.0"_s);
    QCOMPARE(scene.alerts().shown().size(), 1);

    RecordedAlerts alerts;
    AutoUpdater next(m_server.source(), ApplicationBundle(scene.bundle().path()), alerts);
    next.checkAfterLaunch();
    QCOMPARE(QSettings().allKeys(), QStringList());
    QTRY_COMPARE(alerts.shown().size(), 1);
    QCOMPARE(alerts.shown().first().text, u"Updated to v0.2.0."_s);
}

void InstallationTest::doesNothingLater() {
    UpdateScene scene(m_server, RecordedAlerts::Answer::Later);
    scene.offerArchive();
    scene.updater().checkForUpdatesManually();
    QTRY_COMPARE(scene.alerts().shown().size(), 1);
    QVERIFY(!scene.updater().isUsingNetwork());
    QCOMPARE(UpdateScene::storedVersion(), QString());
    QVERIFY(QDir(scene.temporaryFolder()).isEmpty());
    QCOMPARE(m_server.requests().size(), 1);
}

void InstallationTest::keepsTheVersionBeforeItDownloads() {
    UpdateScene scene(m_server);
    scene.offerArchive();
    m_server.answer(u"/archive.tar.gz"_s,
                    {{u"gate"_s, m_server.gate(u"answer"_s)}, {u"status"_s, 404}});
    scene.updater().checkForUpdatesManually();
    QTRY_COMPARE(m_server.requestsFor(u"/archive.tar.gz"_s), 1);
    QCOMPARE(UpdateScene::storedVersion(), u"0.2.0"_s);
    QVERIFY(!QFile::exists(scene.updateFile(u"lumora-update-0.2.0.tar.gz"_s)));
    m_server.open(u"answer"_s);
    QTRY_COMPARE(scene.alerts().shown().size(), 2);
    // What the next launch tells of, though it isn't true.
    QCOMPARE(UpdateScene::storedVersion(), u"0.2.0"_s);
}

void InstallationTest::leavesAScriptThatWaits() {
    UpdateScene scene(m_server);
    scene.offerArchive();
    RunningApplication application(scene);
    scene.updater().checkForUpdatesManually();
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isAskedToEnd(), scene.description(), UpdateScene::patience);
    const UpdateScript script{.appPath = scene.bundle().path(),
                              .newPath = scene.updateFile(u"lumora-update-extract/Lumora.app"_s),
                              .archivePath = scene.updateFile(u"lumora-update-0.2.0.tar.gz"_s),
                              .unpackFolder = scene.updateFile(u"lumora-update-extract"_s),
                              .scriptPath = scene.updateFile(u"lumora-update.sh"_s)};
    QCOMPARE(QString::fromUtf8(contentOf(script.scriptPath)), script.text());
    QVERIFY(QFileInfo(script.scriptPath).isExecutable());
    QCOMPARE(contentOf(script.archivePath), contentOf(scene.servedArchive()));
    QCOMPARE(SampleBundle::startedVersion(script.newPath), u"0.2.0"_s);
    QCOMPARE(QDir(scene.updateFolder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(),
             3);
    QVERIFY(scene.isBundleUntouched());
    application.end();
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isSwapDone(), scene.description(), UpdateScene::patience);
}

void InstallationTest::leavesAScriptThatNobodyHangsUpOn() {
    UpdateScene scene(m_server);
    scene.offerArchive();
    RunningApplication application(scene);
    scene.updater().checkForUpdatesManually();
    const pid_t script = awaitScript(scene);
    QVERIFY(script > 0);
    QCOMPARE(::kill(script, SIGHUP), 0);
    application.end();
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isSwapDone(), scene.description(), UpdateScene::patience);
}

void InstallationTest::replacesWhatAnEarlierAttemptHasLeft() {
    UpdateScene scene(m_server);
    scene.offerArchive();
    QVERIFY(QDir().mkpath(scene.updateFile(u"lumora-update-extract/Lumora.app/Contents"_s)));
    QVERIFY(QFile::setPermissions(scene.updateFolder(),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    const QStringList stale{u"lumora-update-extract/Lumora.app/Contents/stale"_s,
                            u"lumora-update-0.2.0.tar.gz"_s, u"lumora-update.sh"_s};
    for (const QString& name : stale) {
        QFile file(scene.updateFile(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("stale") > 0);
    }
    scene.updater().checkForUpdatesManually();
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isSwapDone(), scene.description(), UpdateScene::patience);
    QVERIFY(!QFile::exists(scene.bundle().path() + u"/Contents/stale"_s));
    QCOMPARE(scene.alerts().shown().size(), 1);
}

void InstallationTest::acceptsPlainVersions_data() {
    QTest::addColumn<QString>("version");
    QTest::newRow("everything that is allowed") << u"9.Az_+-09"_s;
    QTest::newRow("dots") << u"..9.."_s;
}

void InstallationTest::acceptsPlainVersions() {
    QFETCH(const QString, version);
    UpdateScene scene(m_server);
    scene.offerArchive(u"honest"_s, version);
    RunningApplication application(scene);
    scene.updater().checkForUpdatesManually();
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isAskedToEnd(), scene.description(), UpdateScene::patience);
    QVERIFY(QFile::exists(scene.updateFile(u"lumora-update-"_s + version + u".tar.gz"_s)));
    QCOMPARE(UpdateScene::storedVersion(), version);
    application.end();
    QTRY_COMPARE_WITH_TIMEOUT(scene.bundle().lastStarted(), version, UpdateScene::patience);
}

void InstallationTest::followsAllowedRedirects() {
    UpdateScene scene(m_server);
    scene.offerArchive();
    m_server.offer(u"0.2.0"_s, u"/first"_s);
    const QString archive = m_server.address() + u"/archive.tar.gz"_s;
    m_server.redirect(u"/first"_s, u"/second"_s, 301);
    m_server.redirect(u"/second"_s, m_server.address() + u"/third"_s);
    m_server.redirect(u"/third"_s, archive, 308);
    scene.updater().checkForUpdatesManually();
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isAskedToEnd(), scene.description(), UpdateScene::patience);
    for (const QString& path : {u"/first"_s, u"/second"_s, u"/third"_s, u"/archive.tar.gz"_s})
        QCOMPARE(m_server.requestsFor(path), 1);
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isSwapDone(), scene.description(), UpdateScene::patience);
}

void InstallationTest::givesUpWhenTheApplicationEndsBeforeTheAnswer() {
    UpdateScene scene(m_server);
    scene.offerArchive();
    SlowUser user;
    std::optional<AutoUpdater> updater;
    updater.emplace(m_server.source(), ApplicationBundle(scene.bundle().path()), user);
    updater->checkForUpdatesManually();
    QTRY_VERIFY(user.isAsked());
    updater.reset();
    user.answer(0);
    QTRY_VERIFY(user.isThrough());
    QCOMPARE(UpdateScene::storedVersion(), QString());
    QVERIFY(!QFile::exists(scene.updateFolder()));
}

void InstallationTest::givesUpWhenTheApplicationEndsDuringTheDownload_data() {
    QTest::addColumn<int>("status");
    QTest::newRow("which succeeds") << 200;
    QTest::newRow("which fails") << 404;
}

void InstallationTest::givesUpWhenTheApplicationEndsDuringTheDownload() {
    QFETCH(const int, status);
    UpdateScene scene(m_server, RecordedAlerts::Answer::Later);
    scene.offerArchive();
    const QString gate = QString::number(status);
    m_server.answer(u"/archive.tar.gz"_s, {{u"halfway"_s, m_server.gate(gate)},
                                           {u"status"_s, status},
                                           {u"file"_s, scene.servedArchive()}});
    RecordedAlerts alerts(RecordedAlerts::Answer::UpdateNow);
    std::optional<AutoUpdater> updater;
    updater.emplace(m_server.source(), ApplicationBundle(scene.bundle().path()), alerts);
    updater->checkForUpdatesManually();
    QTRY_VERIFY(m_server.hasReached(gate));
    updater.reset();
    m_server.open(gate);
    // Other checks that are asked and answered later.
    for (qsizetype i = 1; i <= 3; ++i) {
        scene.updater().checkForUpdatesManually();
        QTRY_COMPARE(scene.alerts().shown().size(), i);
    }
    QTRY_COMPARE(QFile::exists(scene.updateFile(u"lumora-update-0.2.0.tar.gz"_s)), status == 200);
    QVERIFY(!QFile::exists(scene.updateFile(u"lumora-update-extract"_s)));
    QCOMPARE(alerts.shown().size(), 1);
}

void InstallationTest::startsNoScriptOnceTheApplicationHasEnded() {
#ifndef Q_OS_LINUX
    QSKIP("Only GNU's tar can be held up.");
#endif
    UpdateScene scene(m_server);
    scene.offerArchive();
    // Holds tar up. A script, since tar 1.35 breaks on a command in quotes; its path needs none,
    // as those in the scene do.
    const QTemporaryDir plainlyNamed(u"/tmp/lumora-test-XXXXXX"_s);
    const QString gate = plainlyNamed.filePath(u"gate"_s);
    const QString hold = plainlyNamed.filePath(u"hold"_s);
    QFile file(hold);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\nuntil [ -e " + gate.toUtf8() + " ]; do sleep 0.01; done\n");
    file.close();
    QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    const ChangedVariable options("TAR_OPTIONS",
                                  "--checkpoint=1 --checkpoint-action=exec=" + hold.toUtf8());
    RecordedAlerts alerts(RecordedAlerts::Answer::UpdateNow);
    std::optional<AutoUpdater> updater;
    updater.emplace(m_server.source(), ApplicationBundle(scene.bundle().path()), alerts);
    updater->checkForUpdatesManually();
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(scene.updateFile(u"lumora-update-extract"_s)),
                             UpdateScene::patience);
    updater.reset();
    QVERIFY(QFile(gate).open(QIODevice::WriteOnly));
    const QString script = scene.updateFile(u"lumora-update.sh"_s);
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(script).isExecutable(), UpdateScene::patience);
    // It would run for a second at least.
    QTest::qWait(500);
    QCOMPARE(processRunning(script), 0);
    QVERIFY(scene.isBundleUntouched());
}

void InstallationTest::keepsItsHandsOffFilesItDoesNotKnow() {
    UpdateScene scene(m_server);
    scene.offerArchive();
    QVERIFY(QDir().mkdir(scene.updateFolder()));
    QVERIFY(QFile::setPermissions(scene.updateFolder(),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QFile note(scene.updateFile(u"note"_s));
    QVERIFY(note.open(QIODevice::WriteOnly));
    scene.updater().checkForUpdatesManually();
    QTRY_COMPARE_WITH_TIMEOUT(scene.bundle().lastStarted(), u"0.2.0"_s, UpdateScene::patience);
    QCOMPARE(QDir(scene.updateFolder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList{u"note"_s});
}

void InstallationTest::installsOnlyOnceAtATime() {
    UpdateScene scene(m_server);
    scene.offerArchive();
    const QString gate = m_server.gate(u"once"_s);
    m_server.answer(u"/archive.tar.gz"_s, {{u"gate"_s, gate}, {u"file"_s, scene.servedArchive()}});
    RunningApplication application(scene);
    scene.updater().checkForUpdatesManually();
    QTRY_COMPARE(m_server.requestsFor(u"/archive.tar.gz"_s), 1);
    scene.updater().checkForUpdatesManually();
    QTRY_COMPARE(scene.alerts().shown().size(), 2);
    m_server.open(u"once"_s);
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isAskedToEnd(), scene.description(), UpdateScene::patience);
    // Nor once it is done, and the application stays all the same.
    scene.updater().checkForUpdatesManually();
    QTRY_COMPARE(scene.alerts().shown().size(), 3);
    QCOMPARE(scene.alerts().shown().last().buttons.size(), 2);
    QTRY_VERIFY(!scene.updater().isUsingNetwork());
    QCOMPARE(m_server.requestsFor(u"/archive.tar.gz"_s), 1);
    application.end();
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isSwapDone(), scene.description(), UpdateScene::patience);
    QCOMPARE(scene.alerts().shown().size(), 3);
}

void InstallationTest::refusesWhileAnotherInstalls() {
    UpdateScene scene(m_server);
    scene.offerArchive();
    const QString gate = m_server.gate(u"another"_s);
    m_server.answer(u"/archive.tar.gz"_s, {{u"gate"_s, gate}, {u"file"_s, scene.servedArchive()}});
    scene.updater().checkForUpdatesManually();
    QTRY_COMPARE(m_server.requestsFor(u"/archive.tar.gz"_s), 1);
    SecondWindow second(scene, m_server);
    second.updater().checkForUpdatesManually();
    QTRY_VERIFY(second.hasTold() || m_server.requestsFor(u"/archive.tar.gz"_s) > 1);
    m_server.open(u"another"_s);
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isSwapDone(), scene.description(), UpdateScene::patience);
    QCOMPARE(second.told(), QStringList{u"Another update is being installed."_s});
    QVERIFY(!second.isAskedToEnd());
    QCOMPARE(m_server.requestsFor(u"/archive.tar.gz"_s), 1);
    QCOMPARE(SampleBundle::startedVersion(scene.bundle().path()), u"0.2.0"_s);
}

void InstallationTest::refusesWhileAScriptIsAtWork() {
    UpdateScene scene(m_server, RecordedAlerts::Answer::Later);
    scene.offerArchive();
    RunningApplication application(scene);
    std::optional<SecondWindow> first(std::in_place, scene, m_server);
    first->updater().checkForUpdatesManually();
    QTRY_VERIFY_WITH_TIMEOUT(first->isAskedToEnd(), UpdateScene::patience);
    first.reset();
    SecondWindow second(scene, m_server);
    second.updater().checkForUpdatesManually();
    QTRY_VERIFY_WITH_TIMEOUT(second.hasTold() || second.isAskedToEnd(), UpdateScene::patience);
    application.end();
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isSwapDone(), scene.description(), UpdateScene::patience);
    QCOMPARE(second.told(), QStringList{u"Another update is being installed."_s});
    QVERIFY(!second.isAskedToEnd());
    QCOMPARE(SampleBundle::startedVersion(scene.bundle().path()), u"0.2.0"_s);
}

void InstallationTest::triesAgainAfterAFailure() {
    UpdateScene scene(m_server);
    m_server.offer(u"0.2.0"_s);
    scene.updater().checkForUpdatesManually();
    QTRY_COMPARE(scene.alerts().shown().size(), 2);
    QCOMPARE(scene.alerts().shown().last().text, u"Download failed"_s);
    scene.offerArchive();
    scene.updater().checkForUpdatesManually();
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isSwapDone(), scene.description(), UpdateScene::patience);
}

void InstallationTest::claimsNothingAfterASwapThatFailed() {
    UpdateScene scene(m_server);
    scene.offerArchive();
    RunningApplication application(scene);
    scene.updater().checkForUpdatesManually();
    const pid_t script = awaitScript(scene);
    QVERIFY(script > 0);
    QCOMPARE(::kill(script, SIGKILL), 0);
    QCOMPARE(UpdateScene::storedVersion(), u"0.2.0"_s);

    RecordedAlerts alerts;
    AutoUpdater next(m_server.source(), ApplicationBundle(scene.bundle().path()), alerts);
    next.checkAfterLaunch();
    QCOMPARE(QSettings().allKeys(), QStringList());
    // The check comes after the notice would.
    QTRY_COMPARE(alerts.shown().size(), 1);
    QCOMPARE(alerts.shown().first().title, u"New Version v0.2.0 Available"_s);
    QVERIFY(scene.isBundleUntouched());
}

QTEST_GUILESS_MAIN(InstallationTest)
#include "tst_installation.moc"
