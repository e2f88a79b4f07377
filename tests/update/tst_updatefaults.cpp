// SPDX-License-Identifier: MIT
#include "ChangedVariable.h"
#include "FreshHome.h"
#include "Shortage.h"
#include "UpdateScene.h"

#include <QDir>
#include <QStandardPaths>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

#include <functional>

using namespace Qt::StringLiterals;

/// Everything that can go wrong between "Update Now" and the end of the application.
class UpdateFaultsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void leavesTheRunningBundleAlone_data();
    void leavesTheRunningBundleAlone();
    void unpacksNothingOutsideItsFolder_data();
    void unpacksNothingOutsideItsFolder();
    void replacesHostileEntries_data();
    void replacesHostileEntries();
    void reportsWhenSpaceIsShort_data();
    void reportsWhenSpaceIsShort();
    void reportsAToolThatIsMissing_data();
    void reportsAToolThatIsMissing();
    void reportsAnUnwritableTemporaryDirectory();
    void worksElsewhereWhereNoProgramMayBeRun();
    void reportsThatNoProgramMayBeRunAnywhere();
    void reportsAnUnwritableApplicationFolder_data();
    void reportsAnUnwritableApplicationFolder();
    void takesAnArchiveThatAgreesWithItsDigest_data();
    void takesAnArchiveThatAgreesWithItsDigest();
    void tellsNothingOfAnAddressThatIsNone_data();
    void tellsNothingOfAnAddressThatIsNone();

private:
    /// Accepts the offer, and expects one more alert, with this text, and no change.
    static void verifyFailure(UpdateScene& scene, const QString& pattern);

    FreshHome m_home;
    ReleaseServer m_server;
};

namespace {

/// Sets the scene for a fault.
using Preparation = std::function<void(UpdateScene&)>;

struct Fault final {
    const char* name;
    Preparation prepare;
    /// A pattern for the text that the user gets to see.
    QString text;
    /// Refused before anything is written, the preference included.
    bool isRefusedAtOnce{false};
};

Preparation archive(const QString& kind) {
    return [kind](UpdateScene& scene) { scene.offerArchive(kind); };
}

/// Answers the download in this way.
Preparation download(const QJsonObject& answer) {
    return [answer](UpdateScene& scene) {
        scene.server().offer(u"0.2.0"_s);
        scene.server().answer(u"/archive.tar.gz"_s, answer);
    };
}

/// Sends the real archive, but not as it should be sent.
Preparation honestArchive(const QJsonObject& manner) {
    return [manner](UpdateScene& scene) {
        scene.offerArchive();
        QJsonObject answer = manner;
        answer[u"file"_s] = scene.servedArchive();
        scene.server().answer(u"/archive.tar.gz"_s, answer);
    };
}

Preparation redirect(const QString& target) {
    return download({{u"status"_s, 302}, {u"headers"_s, QJsonObject{{u"Location"_s, target}}}});
}

/// Offers an archive at an address of someone else.
Preparation address(const QString& address) {
    return [address](UpdateScene& scene) {
        scene.server().answer(
            ReleaseServer::latestPath(),
            {{u"text"_s, u"{\"tag_name\": \"0.2.0\", \"assets\": [{\"name\": \"a.tar.gz\", "
                         "\"browser_download_url\": \""_s +
                             address + u"\"}]}"_s}});
    };
}

Preparation version(const QString& version) {
    return [version](UpdateScene& scene) { scene.offerArchive(u"honest"_s, version); };
}

/// Cuts the archive itself, so that it arrives as it is announced.
void cutArchive(UpdateScene& scene) {
    constexpr qint64 ballast = 5'000'000;
    const SampleBundle bundle(scene.path(u"new/Lumora.app"_s), u"0.2.0"_s, ballast);
    scene.offerArchiveOf(bundle, u"honest"_s, u"0.2.0"_s);
    QFile file(scene.servedArchive());
    if (!file.resize(file.size() * 3 / 4))
        qFatal("The archive could not be cut");
}

void makePrivateFolder(const QString& path) {
    QDir().mkpath(path);
    ::chmod(QFile::encodeName(path).constData(), 0700);
}

void writeFile(const QString& path, const QByteArray& content) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s could not be written", qUtf8Printable(path));
}

/// Offers the honest archive with this digest instead of its own.
Preparation digest(const std::function<QJsonValue(const QString& right)>& change) {
    return [change](UpdateScene& scene) {
        scene.offerArchive();
        scene.server().offerWithDigest(u"0.2.0"_s, change(scene.digest()));
    };
}

Preparation digest(const QString& wrong) {
    return digest([wrong](const QString&) { return wrong; });
}

/// Offers a bundle after something has been done to its executable.
Preparation newBundle(const std::function<void(const QString& program)>& change) {
    return [change](UpdateScene& scene) {
        const SampleBundle bundle(scene.path(u"new/Lumora.app"_s), u"0.2.0"_s);
        change(bundle.executable());
        QFile::remove(bundle.path() + u"/Contents/Resources/manifest.txt"_s);
        scene.offerArchiveOf(bundle, u"honest"_s, u"0.2.0"_s);
    };
}

QList<Fault> faults() {
    const QString extractFailed = u"^Extract failed$"_s;
    const QString notFound = u"^App bundle not found$"_s;
    const QString downloadFailed = u"^Download failed$"_s;
    const QString notSecure = u"would not be secure\\.$"_s;
    const QString notAFolder = u"/lumora-\\d+: Not a directory$"_s;
    const QString openToOthers = u"/lumora-\\d+ is open to other users\\."_s;
    const QString badVersion = u"^The version \".*\" is not a valid version\\.$"_s;
    const auto gone = [](UpdateScene& scene) {
        ReleaseServer elsewhere;
        elsewhere.stop();
        address(elsewhere.address() + u"/archive.tar.gz"_s)(scene);
    };
    return {
        // The download.
        {"connection refused", gone, u"^Connection refused$"_s},
        {"download 403", download({{u"status"_s, 403}}), downloadFailed},
        {"download 404", download({{u"status"_s, 404}}), downloadFailed},
        {"download 500", download({{u"status"_s, 500}}), downloadFailed},
        {"download 400", download({{u"status"_s, 400}}), downloadFailed},
        {"download 407", download({{u"status"_s, 407}}), downloadFailed},
        {"download 206", honestArchive({{u"status"_s, 206}}), downloadFailed},
        {"download truncated", honestArchive({{u"cut"_s, 10}}), u"^Connection closed$"_s},
        // Where nothing is announced, what is missing may show only in what is unpacked.
        {"download truncated in chunks", honestArchive({{u"cut"_s, 300}, {u"chunked"_s, true}}),
         u"^(Connection closed|Extract failed)$"_s},
        {"no HTTP", download({{u"raw"_s, u"220 mail.example.org ready\r\n"_s}}), u"."_s},
        {"redirect to plain http", redirect(u"http://192.0.2.1/a.tar.gz"_s), notSecure},
        {"redirect to a file", redirect(u"file:///etc/passwd"_s), notSecure},
        {"redirect in a circle", redirect(u"/archive.tar.gz"_s),
         u"^The server redirected the request too often\\.$"_s},
        {"address in plain http", address(u"http://192.0.2.1/a.tar.gz"_s), notSecure},
        {"address of a file", address(u"file:///etc/passwd"_s), notSecure},
        {"address without scheme", address(u"archive.tar.gz"_s), notSecure},
        // The archive.
        {"not an archive", download({{u"text"_s, u"<!DOCTYPE html><title>Moved</title>"_s}}),
         extractFailed},
        {"empty archive", download({{u"text"_s, u""_s}}), extractFailed},
        {"archive cut short", cutArchive, extractFailed},
        {"archive without bundle", archive(u"other-name"_s), extractFailed},
        {"bundle is a file", archive(u"bundle-is-file"_s), extractFailed},
        {"bundle is empty", archive(u"bundle-is-empty"_s), extractFailed},
        {"absolute names", archive(u"absolute-names"_s), extractFailed},
        {"parent names", archive(u"parent-names"_s), extractFailed},
        {"bundle is a link", archive(u"bundle-is-link"_s), extractFailed},
        {"contents are a link", archive(u"contents-is-link"_s), extractFailed},
        {"link out of the bundle", archive(u"link-in-bundle"_s), extractFailed},
        {"relative link out of it", archive(u"relative-link-in-bundle"_s), extractFailed},
        {"written through a link", archive(u"write-through-link"_s), extractFailed},
        // What the release says about the archive.
        {"another digest", digest(u"sha256:"_s + QString(64, u'0')), downloadFailed},
        {"digest cut short", digest([](const QString& right) { return right.chopped(1); }),
         downloadFailed},
        {"digest that is none", digest(u"sha256:"_s), downloadFailed},
        // A bundle that can't start.
        {"executable is not executable", newBundle([](const QString& program) {
             QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner);
         }),
         notFound},
        {"executable of one byte",
         newBundle([](const QString& program) { writeFile(program, "L"); }), notFound},
        {"executable of another version", newBundle([](const QString& program) {
             writeFile(program, "#!/bin/sh\necho Lumora 0.1.9\n");
         }),
         notFound},
        // The version.
        {"version with a path", version(u"9./../../x"_s), badVersion, true},
        {"version with a command", version(u"9.\"$(touch owned)\""_s), badVersion, true},
        {"version with a blank", version(u"9.1. 2"_s), badVersion, true},
        {"version with a line feed", version(u"9.1\\n.2"_s), badVersion, true},
        {"version with a letter from afar", version(u"9.ä"_s), badVersion, true},
        {"version with other digits", version(u"9.\u0661"_s), badVersion, true},
        // The updater's folder.
        {"folder is a link",
         [](UpdateScene& scene) {
             scene.offerArchive();
             makePrivateFolder(scene.outside());
             QFile::link(scene.outside(), scene.updateFolder());
         },
         notAFolder},
        {"folder is a file",
         [](UpdateScene& scene) {
             scene.offerArchive();
             writeFile(scene.updateFolder(), "hostile");
         },
         notAFolder},
        {"folder is open to others",
         [](UpdateScene& scene) {
             scene.offerArchive();
             QDir().mkdir(scene.updateFolder());
             ::chmod(QFile::encodeName(scene.updateFolder()).constData(), 0777);
         },
         openToOthers},
        {"script is a folder",
         [](UpdateScene& scene) {
             scene.offerArchive();
             makePrivateFolder(scene.updateFolder());
             QDir().mkpath(scene.updateFile(u"lumora-update.sh/full"_s));
         },
         u"/lumora-update\\.sh: Is a directory$"_s},
        {"temporary directory with a quote",
         [](UpdateScene& scene) {
             scene.offerArchive();
             const QString folder = scene.path(u"it's"_s);
             QDir().mkpath(folder);
             qputenv("TMPDIR", folder.toUtf8());
         },
         u"it's/lumora-\\d+: a path with quotes, \\$ or \\\\ can't be updated\\.$"_s},
    };
}

} // namespace

void UpdateFaultsTest::verifyFailure(UpdateScene& scene, const QString& pattern) {
    scene.updater().checkForUpdatesManually();
    QTRY_VERIFY2_WITH_TIMEOUT(scene.alerts().shown().size() == 2 || scene.isAskedToEnd(),
                              scene.description(), UpdateScene::patience);
    QVERIFY(!scene.isAskedToEnd());
    const UpdateAlerts::Alert alert = scene.alerts().shown().last();
    QCOMPARE(alert.style, UpdateAlerts::Style::Warning);
    QCOMPARE(alert.title, u"Update Check Failed"_s);
    QCOMPARE(alert.buttons, QStringList{u"OK"_s});
    QVERIFY2(QRegularExpression(pattern, QRegularExpression::DotMatchesEverythingOption)
                 .match(alert.text)
                 .hasMatch(),
             qPrintable(alert.text));
    QVERIFY(scene.isBundleUntouched());
    QVERIFY(scene.isOutsideUntouched());
    QVERIFY(!QFileInfo(scene.updateFile(u"lumora-update.sh"_s)).isFile());
}

void UpdateFaultsTest::leavesTheRunningBundleAlone_data() {
    QTest::addColumn<int>("index");
    int index = 0;
    for (const Fault& fault : faults())
        QTest::newRow(fault.name) << index++;
}

void UpdateFaultsTest::leavesTheRunningBundleAlone() {
    QFETCH(const int, index);
    const Fault fault = faults().at(index);
    UpdateScene scene(m_server);
    fault.prepare(scene);
    verifyFailure(scene, fault.text);
    QCOMPARE(UpdateScene::storedVersion(), fault.isRefusedAtOnce ? QString() : u"0.2.0"_s);
    if (fault.isRefusedAtOnce)
        QVERIFY(QDir(scene.temporaryFolder()).isEmpty());
}

void UpdateFaultsTest::unpacksNothingOutsideItsFolder_data() {
    QTest::addColumn<QString>("kind");
    for (const char* kind :
         {"write-through-sibling-link", "write-through-parent-link", "write-through-hard-link"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

/// What lies beside the bundle in an archive is thrown away.
void UpdateFaultsTest::unpacksNothingOutsideItsFolder() {
    QFETCH(const QString, kind);
    UpdateScene scene(m_server);
    scene.offerArchive(kind);
    scene.updater().checkForUpdatesManually();
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isSwapDone(), scene.description(), UpdateScene::patience);
    QVERIFY(scene.isOutsideUntouched());
    QCOMPARE(scene.alerts().shown().size(), 1);
}

void UpdateFaultsTest::replacesHostileEntries_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("target");
    const QString archive = u"lumora-update-0.2.0.tar.gz"_s;
    const QString folder = u"lumora-update-extract"_s;
    QTest::newRow("archive, a link to a file") << archive << u"outside/precious"_s;
    QTest::newRow("archive, a link to a folder") << archive << u"outside"_s;
    QTest::newRow("archive, a link to nothing") << archive << u"outside/new"_s;
    QTest::newRow("archive, a full folder") << archive << QString();
    QTest::newRow("unpack folder, a link to a folder") << folder << u"outside"_s;
    QTest::newRow("unpack folder, a link to a file") << folder << u"outside/precious"_s;
    QTest::newRow("unpack folder, a link to nothing") << folder << u"outside/new"_s;
    QTest::newRow("unpack folder, a full folder") << folder << QString();
    QTest::newRow("script, a link to a file") << u"lumora-update.sh"_s << u"outside/precious"_s;
    QTest::newRow("script, a link to nothing") << u"lumora-update.sh"_s << u"outside/new"_s;
}

void UpdateFaultsTest::replacesHostileEntries() {
    QFETCH(const QString, name);
    QFETCH(const QString, target);
    UpdateScene scene(m_server);
    scene.offerArchive();
    makePrivateFolder(scene.updateFolder());
    if (target.isNull())
        QVERIFY(QDir().mkpath(scene.updateFile(name) + u"/Lumora.app"_s));
    else
        QVERIFY(QFile::link(scene.path(target), scene.updateFile(name)));
    scene.updater().checkForUpdatesManually();
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isSwapDone(), scene.description(), UpdateScene::patience);
    QVERIFY(scene.isOutsideUntouched());
    QCOMPARE(SampleBundle::startedVersion(scene.bundle().path()), u"0.2.0"_s);
}

void UpdateFaultsTest::reportsWhenSpaceIsShort_data() {
    QTest::addColumn<bool>("compressible");
    QTest::newRow("for the download") << false;
    QTest::newRow("for unpacking") << true;
}

void UpdateFaultsTest::reportsWhenSpaceIsShort() {
    QFETCH(const bool, compressible);
    UpdateScene scene(m_server);
    constexpr qint64 mebibyte = 1024 * 1024;
    const SampleBundle bundle(scene.path(u"new/Lumora.app"_s), u"0.2.0"_s, 3 * mebibyte);
    scene.offerArchiveOf(bundle, u"honest"_s, u"0.2.0"_s);
    if (!compressible)
        QVERIFY(QFile::resize(scene.servedArchive(), 3 * mebibyte));
    const TightSpace disk(scene.temporaryFolder(), mebibyte);
    verifyFailure(scene, compressible ? u"^Extract failed$"_s : u'^' + disk.complaint() + u'$');
}

void UpdateFaultsTest::reportsAToolThatIsMissing_data() {
    QTest::addColumn<QString>("tool");
    for (const char* tool : {"pgrep", "setsid", "nohup"})
        QTest::newRow(tool) << QString::fromLatin1(tool);
}

void UpdateFaultsTest::reportsAToolThatIsMissing() {
    QFETCH(const QString, tool);
    UpdateScene scene(m_server);
    scene.offerArchive();
    // All others are there.
    const QString tools = scene.path(u"tools"_s);
    QVERIFY(QDir().mkdir(tools));
    for (const QString& other : {u"bash"_s, u"pgrep"_s, u"seq"_s, u"nohup"_s, u"setsid"_s}) {
        if (other != tool)
            QVERIFY(QFile::link(QStandardPaths::findExecutable(other), tools + u'/' + other));
    }
    const ChangedVariable searchPath("PATH", tools.toUtf8());
    scene.updater().checkForUpdatesManually();
    QTRY_VERIFY_WITH_TIMEOUT(scene.alerts().shown().size() == 2 || scene.isAskedToEnd(),
                             UpdateScene::patience);
    QCOMPARE(scene.alerts().shown().last().text, tool + u": No such file or directory"_s);
    QVERIFY(!scene.isAskedToEnd());
    QCOMPARE(m_server.requestsFor(u"/archive.tar.gz"_s), 0);
}

void UpdateFaultsTest::reportsAnUnwritableTemporaryDirectory() {
    UpdateScene scene(m_server);
    scene.offerArchive();
    const ReadOnlyFolder folder(scene.temporaryFolder());
    verifyFailure(scene, u"/lumora-\\d+: (Read-only file system|Permission denied)$"_s);
    QCOMPARE(UpdateScene::storedVersion(), u"0.2.0"_s);
}

void UpdateFaultsTest::worksElsewhereWhereNoProgramMayBeRun() {
    UpdateScene scene(m_server);
    scene.offerArchive();
    const NoProgramsFolder temporary(scene.temporaryFolder());
    if (!temporary.isInPlace())
        QSKIP("Nobody may mount a folder here.");
    scene.updater().checkForUpdatesManually();
    QTRY_COMPARE_WITH_TIMEOUT(scene.bundle().lastStarted(), u"0.2.0"_s, UpdateScene::patience);
    QCOMPARE(scene.alerts().shown().size(), 1);
    QVERIFY(QDir(scene.temporaryFolder()).isEmpty());
    QCOMPARE(SampleBundle::startedVersion(scene.bundle().path()), u"0.2.0"_s);
}

void UpdateFaultsTest::reportsThatNoProgramMayBeRunAnywhere() {
    UpdateScene scene(m_server);
    scene.offerArchive();
    const QString cache = scene.path(u"cache"_s);
    QVERIFY(QDir().mkdir(cache));
    const NoProgramsFolder temporary(scene.temporaryFolder());
    const NoProgramsFolder elsewhere(cache);
    if (!temporary.isInPlace() || !elsewhere.isInPlace())
        QSKIP("Nobody may mount a folder here.");
    const ChangedVariable caches("XDG_CACHE_HOME", cache.toUtf8());
    verifyFailure(scene, u"/cache/lumora-\\d+: no program may be run there\\.$"_s);
    QCOMPARE(m_server.requestsFor(u"/archive.tar.gz"_s), 0);
}

void UpdateFaultsTest::reportsAnUnwritableApplicationFolder_data() {
    QTest::addColumn<QString>("unwritable");
    QTest::newRow("around the bundle") << u"apps"_s;
    QTest::newRow("the bundle") << u"apps/Lumora.app"_s;
    QTest::newRow("a folder in it") << u"apps/Lumora.app/Contents"_s;
}

void UpdateFaultsTest::reportsAnUnwritableApplicationFolder() {
    QFETCH(const QString, unwritable);
    UpdateScene scene(m_server);
    scene.offerArchive();
    const QString path = scene.path(unwritable);
    const ReadOnlyFolder folder(path);
    verifyFailure(scene, u"^"_s + QRegularExpression::escape(path) +
                             u": (Read-only file system|Permission denied)$"_s);
}

void UpdateFaultsTest::takesAnArchiveThatAgreesWithItsDigest_data() {
    QTest::addColumn<QString>("kind");
    for (const char* kind : {"right", "in capitals", "unknown", "null"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void UpdateFaultsTest::takesAnArchiveThatAgreesWithItsDigest() {
    QFETCH(const QString, kind);
    UpdateScene scene(m_server);
    digest([&kind](const QString& right) -> QJsonValue {
        if (kind == u"unknown"_s)
            return u"md0:0123"_s;
        if (kind == u"null"_s)
            return {};
        return kind == u"right"_s ? right : right.toUpper();
    })(scene);
    scene.updater().checkForUpdatesManually();
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isSwapDone(), scene.description(), UpdateScene::patience);
    QCOMPARE(scene.alerts().shown().size(), 1);
}

void UpdateFaultsTest::tellsNothingOfAnAddressThatIsNone_data() {
    QTest::addColumn<QString>("url");
    QTest::newRow("empty") << u""_s;
    QTest::newRow("blanks") << u"https://example.org/a b.tar.gz"_s;
    QTest::newRow("broken host") << u"https://[example/a.tar.gz"_s;
    QTest::newRow("broken port") << u"https://example.org:port/a.tar.gz"_s;
}

void UpdateFaultsTest::tellsNothingOfAnAddressThatIsNone() {
    QFETCH(const QString, url);
    UpdateScene scene(m_server);
    address(url)(scene);
    scene.updater().checkForUpdatesManually();
    // All of it happens in the turn in which the offer is accepted.
    QTRY_COMPARE(scene.alerts().shown().size(), 1);
    QVERIFY(!scene.updater().isUsingNetwork());
    QCOMPARE(scene.alerts().shown().size(), 1);
    QCOMPARE(UpdateScene::storedVersion(), QString());
    QVERIFY(QDir(scene.temporaryFolder()).isEmpty());
    QVERIFY(!scene.isAskedToEnd());
    QVERIFY(scene.isBundleUntouched());
}

QTEST_GUILESS_MAIN(UpdateFaultsTest)
#include "tst_updatefaults.moc"
