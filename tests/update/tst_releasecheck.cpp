// SPDX-License-Identifier: MIT
#include "AutoUpdater.h"
#include "FreshHome.h"
#include "RecordedAlerts.h"
#include "ReleaseServer.h"
#include "SampleBundle.h"

#include <QLibraryInfo>
#include <QSettings>
#include <QVersionNumber>
#include <QtTest>

#include <map>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

using Alert = UpdateAlerts::Alert;

class ReleaseCheckTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void asksTheReleaseService();
    void answersAManualCheck_data();
    void answersAManualCheck();
    void keepsQuietAboutFailuresAfterLaunch();
    void reportsAServerThatIsNotThere();
    void givesUpAfterFifteenSeconds();
    void doesNothingWithAnUnusableAddress();
    void takesInNoMoreThanItReads();
    void doesNotKeepConcurrentChecksApart();
    void readsTheVersionAgainForEveryCheck();
    void tellsOfAReleaseThatOthersInstall_data();
    void tellsOfAReleaseThatOthersInstall();
    void offersTheSameReleaseAgain();
    void survivesItsEndDuringACheck();

private:
    /// A check whose answer is in, and what the user got to see of it.
    QList<Alert> check(AutoUpdater& updater) {
        const qsizetype before = m_alerts->shown().size();
        updater.checkForUpdatesManually();
        const bool isDone =
            QTest::qWaitFor([&updater] { return !updater.isUsingNetwork(); }, 30'000);
        return isDone ? m_alerts->shown().sliced(before) : QList<Alert>{{.title = u"busy"_s}};
    }

    [[nodiscard]] AutoUpdater makeUpdater(const QString& owner = u"someone"_s);

    /// The bundle is as it was and starts; the next launch has nothing to tell.
    void verifyNothingHasChanged() const;

    FreshHome m_home;
    QTemporaryDir m_folder;
    ReleaseServer m_server;
    std::optional<SampleBundle> m_bundle;
    QByteArray m_bundleBefore;
    std::optional<RecordedAlerts> m_alerts;
};

namespace {

const QString updateCheckError = u"Failed to check for updates."_s;
const QString cannotConnect = u"Cannot connect to server."_s;
const QList<Alert> silence;

Alert warning(const QString& text) {
    return {.style = UpdateAlerts::Style::Warning,
            .title = u"Update Check Failed"_s,
            .text = text,
            .buttons = {u"OK"_s}};
}

Alert upToDate(const QString& version) {
    return {.title = u"Up to Date"_s,
            .text = u"You are running the latest version (v"_s + version + u")."_s,
            .buttons = {u"OK"_s}};
}

Alert offer(const QString& version, const QString& current = u"0.1.9"_s) {
    return {.title = u"New Version v"_s + version + u" Available"_s,
            .text = u"Current: v"_s + current + u"\n\nThe app will restart after updating."_s,
            .buttons = {u"Update Now"_s, u"Later"_s}};
}

/// A way to answer the question for the latest release, and what comes of it.
struct Case final {
    const char* name;
    QJsonObject answer;
    QList<Alert> manual;
    QList<Alert> silent;
};

/// In a form that a failed comparison shows.
QStringList linesOf(const QList<Alert>& alerts) {
    QStringList lines;
    for (const Alert& alert : alerts) {
        const QString style =
            alert.style == UpdateAlerts::Style::Warning ? u"warning"_s : u"information"_s;
        lines.append(QStringList{style, alert.title, alert.text, alert.buttons.join(u", "_s)}.join(
            u" | "_s));
    }
    return lines;
}

QJsonObject text(const QString& body) {
    return {{u"text"_s, body}};
}

QJsonObject status(int code) {
    return {{u"status"_s, code}, {u"text"_s, u"{\"tag_name\": \"v9\"}"_s}};
}

/// A release 0.2.0 with these assets.
QJsonObject assets(const QString& list) {
    return text(u"{\"tag_name\": \"0.2.0\", \"assets\": "_s + list + u'}');
}

QJsonObject tag(const QString& json) {
    return text(u"{\"tag_name\": "_s + json +
                u", \"assets\": [{\"name\": \"a.tar.gz\", \"browser_download_url\": \"u\"}]}"_s);
}

QJsonObject cut(QJsonObject answer) {
    answer[u"cut"_s] = 5;
    return answer;
}

QJsonObject chunked(QJsonObject answer) {
    answer[u"chunked"_s] = true;
    return answer;
}

QJsonObject endless(QJsonObject answer) {
    answer[u"endless"_s] = true;
    return answer;
}

constexpr qsizetype mebibyte = 1024 * 1024;

/// With blanks behind it.
QJsonObject ofLength(QJsonObject answer, qsizetype length) {
    answer[u"text"_s] = answer[u"text"_s].toString().leftJustified(length);
    return answer;
}

QJsonObject redirect(const QString& target) {
    return {{u"status"_s, 302}, {u"headers"_s, QJsonObject{{u"Location"_s, target}}}};
}

QList<Case> failures() {
    const QJsonObject newer = tag(u"\"0.2.0\""_s);
    const QList<Alert> error{warning(updateCheckError)};
    const QList<Alert> unreachable{warning(cannotConnect)};
    const bool passesOverEarlyAnswers = QLibraryInfo::version() >= QVersionNumber(6, 5);
    return {
        {"403", status(403), unreachable, {}},
        {"404", status(404), unreachable, {}},
        {"500", status(500), unreachable, {}},
        {"503", status(503), unreachable, {}},
        {"401", status(401), unreachable, {}},
        {"400", status(400), unreachable, {}},
        {"407", status(407), unreachable, {}},
        {"418", status(418), unreachable, {}},
        // Newer versions of Qt wait for the answer behind an early one, which never comes.
        {"103", status(103), passesOverEarlyAnswers ? error : unreachable, {}},
        {"404 cut short", cut(status(404)), unreachable, {}},
        {"404 without an end", endless(status(404)), unreachable, {}},
        {"302 to nowhere without an end", endless(status(302)), unreachable, {}},
        {"201 is not 200", status(201), unreachable, {}},
        {"204", {{u"status"_s, 204}}, unreachable, {}},
        {"304", {{u"status"_s, 304}}, unreachable, {}},
        {"302 to nowhere", {{u"status"_s, 302}}, unreachable, {}},
        {"redirect to plain http", redirect(u"http://192.0.2.1/latest"_s), error, {}},
        {"redirect to a file", redirect(u"file:///etc/passwd"_s), error, {}},
        {"redirect in a circle", redirect(u"/circle"_s), error, {}},
        {"no HTTP", {{u"raw"_s, u"220 mail.example.org ready\r\n"_s}}, error, {}},
        {"no answer at all", {{u"raw"_s, u""_s}}, error, {}},
        {"cut short", cut(newer), error, {}},
        {"cut short in chunks", cut(chunked(newer)), error, {}},
        {"broken JSON", text(u"{\"tag_name\": \"0.2.0\""_s), error, {}},
        {"more than JSON", text(u"{\"tag_name\": \"0.2.0\"} x"_s), error, {}},
        {"without an end", endless(newer), error, {}},
        {"longer than a mebibyte", ofLength(newer, mebibyte + 1), error, {}},
        {"a page", text(u"<!DOCTYPE html><title>Sign in</title>"_s), error, {}},
        {"empty body", text({}), error, {}},
        {"a bare number", text(u"42"_s), error, {}},
        {"a bare text", text(u"\"0.2.0\""_s), error, {}},
        {"a list", text(u"[{\"tag_name\": \"0.2.0\"}]"_s), {}, {}},
        {"an empty list", text(u"[]"_s), {}, {}},
        {"no tag_name", text(u"{\"name\": \"0.2.0\", \"assets\": []}"_s), {}, {}},
        {"empty object", text(u"{}"_s), {}, {}},
        {"tag_name a number", tag(u"2"_s), {}, {}},
        {"tag_name null", tag(u"null"_s), {}, {}},
        {"no assets", text(u"{\"tag_name\": \"0.2.0\"}"_s), {}, {}},
        {"assets empty", assets(u"[]"_s), {}, {}},
        {"assets no list", assets(u"{\"name\": \"a.tar.gz\"}"_s), {}, {}},
        {"assets null", assets(u"null"_s), {}, {}},
        {"an asset is no object",
         assets(u"[1, {\"name\": \"a.tar.gz\", \"browser_download_url\": \"u\"}]"_s),
         {},
         {}},
        {"no archive among the assets",
         assets(u"[{\"name\": \"a.zip\", \"browser_download_url\": \"u\"},"
                "{\"name\": \"a.tar.gz.sha256\", \"browser_download_url\": \"u\"},"
                "{\"name\": \"a.tar.gz.asc\", \"browser_download_url\": \"u\"},"
                "{\"name\": \"a.TAR.GZ\", \"browser_download_url\": \"u\"},"
                "{\"name\": 1, \"browser_download_url\": \"u\"},"
                "{\"browser_download_url\": \"u\"}]"_s),
         {},
         {}},
        {"archive without address", assets(u"[{\"name\": \"a.tar.gz\"}]"_s), {}, {}},
        {"archive with a number for address",
         assets(u"[{\"name\": \"a.tar.gz\", \"browser_download_url\": 1}]"_s),
         {},
         {}},
        {"only the first archive counts",
         assets(u"[{\"name\": \"a.tar.gz\"},"
                "{\"name\": \"b.tar.gz\", \"browser_download_url\": \"u\"}]"_s),
         {},
         {}},
    };
}

QList<Case> cases() {
    const auto both = [](const QString& version) { return QList<Alert>{offer(version)}; };
    const auto current = [] { return QList<Alert>{upToDate(u"0.1.9"_s)}; };
    return failures() +
           QList<Case>{
               {"the same", tag(u"\"0.1.9\""_s), current(), {}},
               {"the same with a v", tag(u"\"v0.1.9\""_s), current(), {}},
               {"the same, written longer", tag(u"\"v0.1.9.0\""_s), current(), {}},
               {"older", tag(u"\"v0.1.8\""_s), current(), {}},
               {"empty tag", tag(u"\"\""_s), current(), {}},
               {"only a v", tag(u"\"v\""_s), current(), {}},
               {"a word", tag(u"\"latest\""_s), current(), {}},
               {"older and without assets", text(u"{\"tag_name\": \"0.1.8\"}"_s), current(), {}},
               {"newer", tag(u"\"0.2.0\""_s), both(u"0.2.0"_s), both(u"0.2.0"_s)},
               {"newer with a v", tag(u"\"v0.1.10\""_s), both(u"0.1.10"_s), both(u"0.1.10"_s)},
               {"one v only", tag(u"\"vv1.2\""_s), both(u"v1.2"_s), both(u"v1.2"_s)},
               {"a capital V is part of the version", tag(u"\"V1.2\""_s), both(u"V1.2"_s),
                both(u"V1.2"_s)},
               {"newer in chunks", chunked(tag(u"\"0.2.0\""_s)), both(u"0.2.0"_s),
                both(u"0.2.0"_s)},
               {"moved", redirect(u"/moved"_s), both(u"7"_s), both(u"7"_s)},
               {"moved, on a page without an end", endless(redirect(u"/moved"_s)), both(u"7"_s),
                both(u"7"_s)},
               {"as long as a mebibyte", ofLength(tag(u"\"0.2.0\""_s), mebibyte), both(u"0.2.0"_s),
                both(u"0.2.0"_s)},
               {"archive after others",
                assets(u"[{\"name\": \"a.zip\"},"
                       "{\"name\": \".tar.gz\", \"browser_download_url\": \"u\"}]"_s),
                both(u"0.2.0"_s), both(u"0.2.0"_s)},
               {"archive after its checksum and its signature",
                assets(u"[{\"name\": \"a.tar.gz.sha256\"}, {\"name\": \"a.tar.gz.asc\"},"
                       "{\"name\": \"a.tar.gz\", \"browser_download_url\": \"u\"}]"_s),
                both(u"0.2.0"_s), both(u"0.2.0"_s)},
               {"notes are not shown",
                text(u"{\"tag_name\": \"0.2.0\", \"body\": \"<b>notes</b>\", \"assets\": "
                     "[{\"name\": \"a.tar.gz\", \"browser_download_url\": \"u\"}]}"_s),
                both(u"0.2.0"_s), both(u"0.2.0"_s)},
           };
}

} // namespace

void ReleaseCheckTest::init() {
    QSettings().clear();
    m_bundle.emplace(m_folder.filePath(u"Lumora.app"_s), u"0.1.9"_s);
    m_bundleBefore = SampleBundle::snapshot(m_bundle->path());
    m_alerts.emplace();
    m_server.reset();
    m_server.answer(u"/circle"_s, redirect(u"/circle"_s));
    m_server.answer(u"/moved"_s, tag(u"\"7\""_s));
}

AutoUpdater ReleaseCheckTest::makeUpdater(const QString& owner) {
    return AutoUpdater(m_server.source(owner), ApplicationBundle(m_bundle->path()), *m_alerts);
}

void ReleaseCheckTest::verifyNothingHasChanged() const {
    QVERIFY(!QSettings().contains(u"Lumora.updatedToVersion"_s));
    QCOMPARE(SampleBundle::snapshot(m_bundle->path()), m_bundleBefore);
    QCOMPARE(SampleBundle::startedVersion(m_bundle->path()), u"0.1.9"_s);
}

void ReleaseCheckTest::asksTheReleaseService() {
    AutoUpdater updater = makeUpdater(u"an-account"_s);
    QCOMPARE(linesOf(check(updater)), linesOf(QList<Alert>{warning(cannotConnect)}));
    const auto requests = m_server.requests();
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests.first()["path"_L1].toString(),
             u"/repos/an-account/Lumora-releases/releases/latest"_s);
    QCOMPARE(requests.first()["headers"_L1]["accept"_L1].toString(),
             u"application/vnd.github+json"_s);
}

void ReleaseCheckTest::answersAManualCheck_data() {
    QTest::addColumn<int>("index");
    int index = 0;
    for (const Case& row : cases())
        QTest::newRow(row.name) << index++;
}

void ReleaseCheckTest::answersAManualCheck() {
    QFETCH(const int, index);
    const Case row = cases().at(index);
    m_server.answer(ReleaseServer::latestPath(), row.answer);
    AutoUpdater updater = makeUpdater();
    QCOMPARE(linesOf(check(updater)), linesOf(row.manual));
    verifyNothingHasChanged();
}

void ReleaseCheckTest::keepsQuietAboutFailuresAfterLaunch() {
    // All at once: each waits for three seconds.
    std::vector<std::unique_ptr<RecordedAlerts>> alerts;
    std::vector<std::unique_ptr<AutoUpdater>> updaters;
    const QList<Case> rows = cases();
    for (const Case& row : rows) {
        const QString owner = QString::number(updaters.size());
        m_server.answer(ReleaseServer::latestPath(owner), row.answer);
        alerts.push_back(std::make_unique<RecordedAlerts>());
        updaters.push_back(std::make_unique<AutoUpdater>(
            m_server.source(owner), ApplicationBundle(m_bundle->path()), *alerts.back()));
        updaters.back()->checkAfterLaunch();
    }
    for (std::size_t i = 0; i < updaters.size(); ++i) {
        const QString path = ReleaseServer::latestPath(QString::number(i));
        // Answers that are none are asked for again.
        QTRY_VERIFY_WITH_TIMEOUT(m_server.requestsFor(path) > 0, 30'000);
        QTRY_VERIFY_WITH_TIMEOUT(!updaters[i]->isUsingNetwork(), 30'000);
        const Case& row = rows.at(static_cast<qsizetype>(i));
        QVERIFY2(alerts[i]->shown() == row.silent,
                 qPrintable(linesOf(alerts[i]->shown()).join(u"; "_s) + u" after "_s +
                            QString::fromLatin1(row.name)));
    }
}

void ReleaseCheckTest::reportsAServerThatIsNotThere() {
    ReleaseServer gone;
    gone.stop();
    AutoUpdater updater(gone.source(), ApplicationBundle(m_bundle->path()), *m_alerts);
    QCOMPARE(linesOf(check(updater)), linesOf(QList<Alert>{warning(updateCheckError)}));
    verifyNothingHasChanged();
}

void ReleaseCheckTest::givesUpAfterFifteenSeconds() {
    m_server.answer(ReleaseServer::latestPath(), {{u"silence"_s, true}});
    AutoUpdater updater = makeUpdater();
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(linesOf(check(updater)), linesOf(QList<Alert>{warning(updateCheckError)}));
    QVERIFY2(timer.elapsed() > 14'000 && timer.elapsed() < 20'000,
             qPrintable(QString::number(timer.elapsed())));
    verifyNothingHasChanged();
}

void ReleaseCheckTest::doesNothingWithAnUnusableAddress() {
    AutoUpdater updater({.api = u"http://[nonsense"_s, .owner = u"someone"_s},
                        ApplicationBundle(m_bundle->path()), *m_alerts);
    QCOMPARE(linesOf(check(updater)), linesOf(silence));
    verifyNothingHasChanged();
}

void ReleaseCheckTest::takesInNoMoreThanItReads() {
    // A server and process of its own: nobody else has flooded it.
    ReleaseServer server;
    QJsonObject answer = endless(tag(u"\"0.2.0\""_s));
    answer[u"gate"_s] = server.gate(u"asked"_s);
    server.answer(ReleaseServer::latestPath(), answer);
    AutoUpdater updater(server.source(), ApplicationBundle(m_bundle->path()), *m_alerts);
    updater.checkForUpdatesManually();
    QTRY_VERIFY(server.hasReached(u"asked"_s));
    server.open(u"asked"_s);
    QVERIFY(!server.floods());
    QTRY_COMPARE(linesOf(m_alerts->shown()), linesOf({warning(updateCheckError)}));
}

void ReleaseCheckTest::doesNotKeepConcurrentChecksApart() {
    m_server.answer(ReleaseServer::latestPath(), tag(u"\"0.2.0\""_s));
    AutoUpdater updater = makeUpdater();
    updater.checkForUpdatesManually();
    updater.checkForUpdatesManually();
    QTRY_COMPARE(linesOf(m_alerts->shown()), linesOf({offer(u"0.2.0"_s), offer(u"0.2.0"_s)}));
}

void ReleaseCheckTest::readsTheVersionAgainForEveryCheck() {
    m_server.answer(ReleaseServer::latestPath(), tag(u"\"0.2.0\""_s));
    AutoUpdater updater = makeUpdater();
    QCOMPARE(linesOf(check(updater)), linesOf(QList<Alert>{offer(u"0.2.0"_s)}));
    m_bundle.emplace(m_bundle->path(), u"0.2.0"_s);
    QCOMPARE(linesOf(check(updater)), linesOf(QList<Alert>{upToDate(u"0.2.0"_s)}));
    QVERIFY(QFile::remove(m_bundle->path() + u"/Contents/Info.plist"_s));
    QCOMPARE(linesOf(check(updater)), linesOf((QList<Alert>{offer(u"0.2.0"_s, u"0.0.0"_s)})));
}

void ReleaseCheckTest::tellsOfAReleaseThatOthersInstall_data() {
    QTest::addColumn<QJsonObject>("answer");
    QTest::addColumn<int>("index");
    QTest::newRow("newer") << tag(u"\"0.2.0\""_s) << 0;
    QTest::newRow("newer without an archive") << assets(u"[]"_s) << 0;
    QTest::newRow("the same") << tag(u"\"0.1.5\""_s) << 1;
    QTest::newRow("no answer") << QJsonObject{{u"status"_s, 404}} << 2;
}

void ReleaseCheckTest::tellsOfAReleaseThatOthersInstall() {
    QFETCH(const QJsonObject, answer);
    QFETCH(const int, index);
    const QList<Alert> told{
        {.title = u"New Version v0.2.0 Available"_s,
         .text = u"Current: v0.1.5"_s,
         .buttons = {u"OK"_s}},
        upToDate(u"0.1.5"_s),
        warning(cannotConnect),
    };
    QCoreApplication::setApplicationVersion(u"0.1.5"_s);
    m_server.answer(ReleaseServer::latestPath(), answer);
    AutoUpdater updater(m_server.source(), std::nullopt, *m_alerts);
    QCOMPARE(linesOf(check(updater)), linesOf({told.at(index)}));
    QCOMPARE(m_server.requests().size(), 1);
    verifyNothingHasChanged();
}

void ReleaseCheckTest::offersTheSameReleaseAgain() {
    m_server.answer(ReleaseServer::latestPath(), tag(u"\"0.2.0\""_s));
    AutoUpdater updater = makeUpdater();
    QCOMPARE(linesOf(check(updater)), linesOf(QList<Alert>{offer(u"0.2.0"_s)}));
    QCOMPARE(linesOf(check(updater)), linesOf(QList<Alert>{offer(u"0.2.0"_s)}));
    QCOMPARE(QSettings().allKeys(), QStringList());
}

void ReleaseCheckTest::survivesItsEndDuringACheck() {
    m_server.answer(ReleaseServer::latestPath(),
                    {{u"gate"_s, m_server.gate(u"end"_s)}, {u"text"_s, u"[broken"_s}});
    std::optional<AutoUpdater> updater;
    updater.emplace(m_server.source(), ApplicationBundle(m_bundle->path()), *m_alerts);
    updater->checkForUpdatesManually();
    QTRY_COMPARE(m_server.requestsFor(ReleaseServer::latestPath()), 1);
    updater.reset();
    m_server.open(u"end"_s);
    // Other checks that are asked and answered later.
    AutoUpdater second = makeUpdater(u"nobody"_s);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(linesOf(check(second)), linesOf(QList<Alert>{warning(cannotConnect)}));
    QCOMPARE(m_alerts->shown().size(), 3);
}

QTEST_GUILESS_MAIN(ReleaseCheckTest)
#include "tst_releasecheck.moc"
