// SPDX-License-Identifier: MIT
#include "ApplicationBundle.h"

#include <QDir>
#include <QtTest>

using namespace Qt::StringLiterals;

class ApplicationBundleTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsItsVersion_data();
    void readsItsVersion();
    void hasNoVersionWithoutAPropertyList();
    void findsTheOutermostBundle_data();
    void findsTheOutermostBundle();
    void knowsItsFiles();
    void isNoneOutsideOfABundle();
};

void ApplicationBundleTest::readsItsVersion_data() {
    QTest::addColumn<QByteArray>("propertyList");
    QTest::addColumn<QString>("version");

    const auto list = [](const QByteArray& content) {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD "
               "PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
               "<plist version=\"1.0\">" +
               content + "</plist>\n";
    };
    const QByteArray key = "<key>CFBundleShortVersionString</key>";
    const QByteArray other = "<key>CFBundleVersion</key><string>7</string>";
    const QByteArray version = key + "<string>1.2.3</string>";
    const QString none = u"0.0.0"_s;
    QTest::newRow("only") << list("<dict>" + version + "</dict>") << u"1.2.3"_s;
    QTest::newRow("among others") << list("<dict>" + other + "\n  " + version +
                                          "<key>c</key><true/></dict>")
                                  << u"1.2.3"_s;
    QTest::newRow("spread over lines")
        << list("\n<dict>\n\t" + key + "\n\t<string>1.2.3</string>\n</dict>\n") << u"1.2.3"_s;
    QTest::newRow("after lists") << list("<dict><key>a</key><array><string>b</string></array>" +
                                         version + "</dict>")
                                 << u"1.2.3"_s;
    QTest::newRow("empty") << list("<dict>" + key + "<string></string></dict>") << u""_s;
    QTest::newRow("escaped") << list("<dict>" + key + "<string>1&amp;2</string></dict>")
                             << u"1&2"_s;
    QTest::newRow("not there") << list("<dict>" + other + "</dict>") << none;
    QTest::newRow("in an inner dictionary")
        << list("<dict><key>inner</key><dict>" + version + "</dict></dict>") << none;
    QTest::newRow("as a value") << list("<dict><key>a</key><string>CFBundleShortVersionString"
                                        "</string>" +
                                        other + "</dict>")
                                << none;
    QTest::newRow("a number") << list("<dict>" + key + "<integer>2</integer></dict>") << none;
    QTest::newRow("no value") << list("<dict>" + key + "</dict>") << none;
    QTest::newRow("an array") << list("<array>" + version + "</array>") << none;
    QTest::newRow("another root") << "<dict>" + version + "</dict>" << none;
    QTest::newRow("cut short") << list("<dict>" + key + "<string>1.2").chopped(9) << none;
    QTest::newRow("not XML") << QByteArray("bplist00\xd1\x01\x02") << none;
    QTest::newRow("nothing") << QByteArray() << none;
}

void ApplicationBundleTest::readsItsVersion() {
    QFETCH(const QByteArray, propertyList);
    const QTemporaryDir folder;
    QDir().mkpath(folder.filePath(u"Contents"_s));
    QFile file(folder.filePath(u"Contents/Info.plist"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(propertyList), propertyList.size());
    file.close();
    QTEST(ApplicationBundle(folder.path()).version(), "version");
}

void ApplicationBundleTest::hasNoVersionWithoutAPropertyList() {
    const QTemporaryDir folder;
    QCOMPARE(ApplicationBundle(folder.path()).version(), u"0.0.0"_s);
}

void ApplicationBundleTest::findsTheOutermostBundle_data() {
    QTest::addColumn<QString>("mainPath");
    QTest::addColumn<QString>("outermost");

    QTest::newRow("a bundle") << u"/Applications/Lumora.app"_s << u"/Applications/Lumora.app"_s;
    QTest::newRow("inside of one")
        << u"/Applications/Lumora.app/Contents/Resources"_s << u"/Applications/Lumora.app"_s;
    QTest::newRow("nested") << u"/a/Outer.app/Contents/Lumora.app"_s << u"/a/Outer.app"_s;
    QTest::newRow("blanks") << u"/a b/Lumora.app"_s << u"/a b/Lumora.app"_s;
    QTest::newRow("another name") << u"/a/Lumora 2.app"_s << u"/a/Lumora 2.app"_s;
    QTest::newRow("first occurrence") << u"/a/my.apps/Lumora.app"_s << u"/a/my.app"_s;
    QTest::newRow("no bundle") << u"/usr/local/Lumora"_s << u"/usr/local/Lumora.app"_s;
    QTest::newRow("nothing") << u""_s << QString();
    QTest::newRow("only the extension") << u".app"_s << QString();
}

void ApplicationBundleTest::findsTheOutermostBundle() {
    QFETCH(const QString, mainPath);
    QFETCH(const QString, outermost);
    const auto found = ApplicationBundle(mainPath).outermostPath();
    QCOMPARE(found.has_value(), !outermost.isNull());
    QCOMPARE(found.value_or(QString()), outermost);
}

void ApplicationBundleTest::knowsItsFiles() {
    QCOMPARE(ApplicationBundle(u"/a/Lumora.app"_s).picturePath(),
             u"/a/Lumora.app/Contents/Resources/Lumora.png"_s);
#ifdef Q_OS_MACOS
    QCOMPARE(ApplicationBundle::executableIn(u"/a/Lumora.app"_s),
             u"/a/Lumora.app/Contents/MacOS/Lumora"_s);
#else
    QCOMPARE(ApplicationBundle::executableIn(u"/a/Lumora.app"_s),
             u"/a/Lumora.app/Contents/bin/Lumora"_s);
#endif
}

void ApplicationBundleTest::isNoneOutsideOfABundle() {
    // As this test is.
    QVERIFY(!ApplicationBundle::running());
}

QTEST_GUILESS_MAIN(ApplicationBundleTest)
#include "tst_applicationbundle.moc"
