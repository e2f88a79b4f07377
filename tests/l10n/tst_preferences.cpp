// SPDX-License-Identifier: MIT
#include "FreshHome.h"
#include "Preferences.h"
#include "Shortage.h"

#include <QDir>
#include <QSettings>
#include <QtTest>

using namespace Qt::StringLiterals;

class PreferencesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void storesAndForgets();
    void forgetsNothingThatIsNotThere();
    void keepsWhatItHasOnAFullDisk_data();
    void keepsWhatItHasOnAFullDisk();

private:
    [[nodiscard]] QString folder() const { return m_home->path() + u"/.config/Lumora"_s; }

    [[nodiscard]] QByteArray content() const {
        QFile file(folder() + u"/Lumora.conf"_s);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "none";
    }

    std::optional<FreshHome> m_home;
};

void PreferencesTest::init() {
    m_home.emplace();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       m_home->path() + u"/.config"_s);
}

void PreferencesTest::storesAndForgets() {
    Preferences::store(u"first"_s, u"a"_s);
    Preferences::store(u"second"_s, true);
    QCOMPARE(content(), QByteArray("[General]\nfirst=a\nsecond=true\n"));
    Preferences::store(u"first"_s, u"b"_s);
    Preferences::forget(u"second"_s);
    QCOMPARE(content(), QByteArray("[General]\nfirst=b\n"));
    QCOMPARE(QDir(folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{u"Lumora.conf"_s});
}

void PreferencesTest::forgetsNothingThatIsNotThere() {
    Preferences::forget(u"first"_s);
    QVERIFY(!QFile::exists(folder()));
}

void PreferencesTest::keepsWhatItHasOnAFullDisk_data() {
    QTest::addColumn<int>("blocks");
    // A lock takes one, the new file another.
    for (const int blocks : {0, 1, 2, 3})
        QTest::addRow("%d blocks left", blocks) << blocks;
}

void PreferencesTest::keepsWhatItHasOnAFullDisk() {
    QFETCH(const int, blocks);
    QVERIFY(QDir().mkpath(folder()));
    constexpr qint64 size = 64 * 1024;
    const TightSpace disk(folder(), size);
    if (!disk.isDisk())
        QSKIP("Only who may mount can have a disk that is full.");
    Preferences::store(u"first"_s, u"a"_s);
    const QByteArray before = content();
    disk.leaveBlocks(blocks);
    Preferences::forget(u"first"_s);
    QCOMPARE(content(), before);
    Preferences::store(u"second"_s, true);
    QCOMPARE(content(), before);
}

QTEST_GUILESS_MAIN(PreferencesTest)
#include "tst_preferences.moc"
