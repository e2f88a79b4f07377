// SPDX-License-Identifier: MIT
#include "ApplicationBundle.h"
#include "Replacement.h"
#include "SampleBundle.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

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

QTEST_APPLESS_MAIN(UnpackedBundleTest)
#include "tst_unpackedbundle.moc"
