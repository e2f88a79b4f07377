// SPDX-License-Identifier: MIT
#include "ApplicationBundle.h"
#include "Background.h"
#include "Replacement.h"
#include "SampleBundle.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#ifdef __linux__
#include <sys/sysmacros.h>
#endif

using namespace Qt::StringLiterals;

class UnpackedBundleTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void acceptsAWholeBundle();
    void acceptsABundleWithoutManifest();
    void acceptsLinksWithinTheBundle();
    void refusesWhatIsNoFolder();
    void refusesALinkToABundle();
    void refusesABundleWithoutExecutable();
    void refusesLinksThatLeadOut_data();
    void refusesLinksThatLeadOut();
    void refusesABundleThatLacksAFile();
    void refusesAFileCutShort();
    void refusesAManifestCutShort_data();
    void refusesAManifestCutShort();
    void doesNotWaitForAManifest_data();
    void doesNotWaitForAManifest();

private:
    [[nodiscard]] QString path(const QString& name = u"Lumora.app"_s) const {
        return m_folder->filePath(name);
    }

    std::optional<QTemporaryDir> m_folder;
    std::optional<SampleBundle> m_bundle;
};

void UnpackedBundleTest::init() {
    m_folder.emplace();
    constexpr qint64 ballast = 1000;
    m_bundle.emplace(path(), u"0.2.0"_s, ballast);
}

void UnpackedBundleTest::cleanup() {
    m_folder.reset();
}

void UnpackedBundleTest::acceptsAWholeBundle() {
    QVERIFY(Replacement::isWhole(path()));
}

void UnpackedBundleTest::acceptsABundleWithoutManifest() {
    QVERIFY(QFile::remove(path(u"Lumora.app/Contents/Resources/manifest.txt"_s)));
    QVERIFY(QFile::remove(path(u"Lumora.app/Contents/lib/ballast.so"_s)));
    QVERIFY(Replacement::isWhole(path()));
}

void UnpackedBundleTest::acceptsLinksWithinTheBundle() {
    QVERIFY(QFile::link(u"ballast.so"_s, path(u"Lumora.app/Contents/lib/ballast.so.1"_s)));
    QVERIFY(QFile::link(u"../lib"_s, path(u"Lumora.app/Contents/Resources/lib"_s)));
    QVERIFY(Replacement::isWhole(path()));
}

void UnpackedBundleTest::refusesWhatIsNoFolder() {
    QVERIFY(!Replacement::isWhole(path(u"Another.app"_s)));
    QVERIFY(!Replacement::isWhole(m_bundle->executable()));
}

void UnpackedBundleTest::refusesALinkToABundle() {
    QVERIFY(QFile::link(path(), path(u"Link.app"_s)));
    QVERIFY(!Replacement::isWhole(path(u"Link.app"_s)));
}

void UnpackedBundleTest::refusesABundleWithoutExecutable() {
    QVERIFY(QFile::remove(path(u"Lumora.app/Contents/Resources/manifest.txt"_s)));
    QVERIFY(QFile::remove(m_bundle->executable()));
    QVERIFY(!Replacement::isWhole(path()));
    QVERIFY(QDir().mkdir(m_bundle->executable()));
    QVERIFY(!Replacement::isWhole(path()));
}

void UnpackedBundleTest::refusesLinksThatLeadOut_data() {
    QTest::addColumn<QString>("target");
    QTest::newRow("absolute") << u"/etc"_s;
    QTest::newRow("relative") << u"../../.."_s;
    QTest::newRow("to nothing") << u"../../../nothing"_s;
    QTest::newRow("to a neighbour with the same beginning") << u"../../../Lumora.app2"_s;
    QTest::newRow("to itself") << u"link"_s;
}

void UnpackedBundleTest::refusesLinksThatLeadOut() {
    QFETCH(const QString, target);
    QVERIFY(QFile::link(target, path(u"Lumora.app/Contents/Resources/link"_s)));
    QVERIFY(!Replacement::isWhole(path()));
}

void UnpackedBundleTest::refusesABundleThatLacksAFile() {
    QVERIFY(QFile::remove(path(u"Lumora.app/Contents/lib/ballast.so"_s)));
    QVERIFY(!Replacement::isWhole(path()));
}

void UnpackedBundleTest::refusesAFileCutShort() {
    QVERIFY(QFile::resize(path(u"Lumora.app/Contents/lib/ballast.so"_s), 999));
    QVERIFY(!Replacement::isWhole(path()));
}

void UnpackedBundleTest::refusesAManifestCutShort_data() {
    QTest::addColumn<int>("lines");
    QTest::addColumn<int>("more");
    QTest::newRow("to nothing") << 0 << 0;
    QTest::newRow("after the number of files") << 1 << 0;
    QTest::newRow("between files") << 2 << 0;
    QTest::newRow("within a file's line") << 2 << 20;
    QTest::newRow("by the last line feed") << 3 << -1;
}

void UnpackedBundleTest::refusesAManifestCutShort() {
    QFETCH(const int, lines);
    QFETCH(const int, more);
    QFile manifest(path(u"Lumora.app/Contents/Resources/manifest.txt"_s));
    QVERIFY(manifest.open(QIODevice::ReadWrite));
    for (int i = 0; i < lines; ++i)
        QVERIFY(!manifest.readLine().isEmpty());
    QVERIFY(manifest.pos() + more < manifest.size());
    QVERIFY(manifest.resize(manifest.pos() + more));
    manifest.close();
    QVERIFY(!Replacement::isWhole(path()));
}

void UnpackedBundleTest::doesNotWaitForAManifest_data() {
    QTest::addColumn<QString>("kind");
    QTest::newRow("a pipe") << u"pipe"_s;
    QTest::newRow("a folder") << u"folder"_s;
    QTest::newRow("a device") << u"device"_s;
    QTest::newRow("a file with a hole") << u"hole"_s;
}

void UnpackedBundleTest::doesNotWaitForAManifest() {
    QFETCH(const QString, kind);
    const QString manifest = path(u"Lumora.app/Contents/Resources/manifest.txt"_s);
    const QByteArray name = QFile::encodeName(manifest);
    QVERIFY(QFile::remove(manifest));
    constexpr qint64 hole = qint64(20) * 1024 * 1024 * 1024;
    if (kind == u"pipe"_s)
        QCOMPARE(::mkfifo(name.constData(), 0600), 0);
    else if (kind == u"folder"_s)
        QVERIFY(QDir().mkdir(manifest));
    else if (kind == u"hole"_s)
        QVERIFY(QFile(manifest).open(QIODevice::WriteOnly) && QFile::resize(manifest, hole));
    else if (::mknod(name.constData(), S_IFCHR | 0600, makedev(1, 5)) != 0)
        QSKIP("Nobody may make a device here.");
    const QFuture<bool> isWhole = inBackground([this] { return Replacement::isWhole(path()); });
    QTRY_VERIFY_WITH_TIMEOUT(isWhole.isFinished(), 30'000);
    QVERIFY(!isWhole.result());
}

QTEST_GUILESS_MAIN(UnpackedBundleTest)
#include "tst_unpackedbundle.moc"
