// SPDX-License-Identifier: MIT
#include "ApplicationBundle.h"
#include "Replacement.h"
#include "SampleBundle.h"
#include "Shortage.h"
#include "UpdateFailure.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>

using namespace Qt::StringLiterals;

class ReplacementTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void takesTheRunningBundle();
    void takesAPathWithNothingAtIt();
    void refusesAnUnwritableFolder_data();
    void refusesAnUnwritableFolder();
    void refusesAnothersFolder();
    void refusesADiskThatIsTooSmall();
    void refusesADiskWithTooFewBlocks();
    void refusesADiskWithTooFewEntries();
    void countsTheOldBundlesRoom();
    void countsTheOldBundlesEntries();
    void needsNoRoomOnTheSameDisk();

private:
    [[nodiscard]] QString path(const QString& name) const { return m_folder->filePath(name); }

    [[nodiscard]] QString app() const { return path(u"apps/Lumora.app"_s); }

    std::optional<QTemporaryDir> m_folder;
};

namespace {

constexpr qint64 mebibyte = 1024 * 1024;

QString failureOf(const std::function<void()>& check) {
    try {
        check();
    } catch (const UpdateFailure& failure) {
        return failure.description();
    }
    return {};
}

QString removalFailure(const QString& app, const QString& running) {
    return failureOf([&] { Replacement::checkRemovable(app, ApplicationBundle(running)); });
}

QString roomFailure(const QString& app, const QString& newBundle) {
    return failureOf([&] { Replacement::checkRoom(app, newBundle); });
}

/// Of one byte each.
void addFiles(const SampleBundle& bundle, int count) {
    for (int i = 0; i < count; ++i) {
        QFile file(bundle.path() + u"/Contents/"_s + QString::number(i));
        if (!file.open(QIODevice::WriteOnly) || file.write("1") != 1)
            qFatal("A file could not be written");
    }
}

} // namespace

void ReplacementTest::init() {
    m_folder.emplace();
    QDir().mkpath(path(u"apps"_s));
}

void ReplacementTest::cleanup() {
    m_folder.reset();
}

void ReplacementTest::takesTheRunningBundle() {
    const SampleBundle bundle(app(), u"0.1.9"_s);
    QCOMPARE(removalFailure(app(), app()), QString());
    QCOMPARE(removalFailure(app(), app() + u"/Contents/Inner.app"_s), QString());
}

void ReplacementTest::takesAPathWithNothingAtIt() {
    QCOMPARE(removalFailure(app(), path(u"apps/Lumora"_s)), QString());
}

void ReplacementTest::refusesAnUnwritableFolder_data() {
    QTest::addColumn<QString>("unwritable");
    QTest::newRow("around the bundle") << u"apps"_s;
    QTest::newRow("the bundle") << u"apps/Lumora.app"_s;
    QTest::newRow("in the bundle") << u"apps/Lumora.app/Contents/Resources"_s;
}

void ReplacementTest::refusesAnUnwritableFolder() {
    QFETCH(const QString, unwritable);
    const SampleBundle bundle(app(), u"0.1.9"_s);
    const ReadOnlyFolder folder(path(unwritable));
    const QString failure = removalFailure(app(), app());
    QVERIFY2(failure == path(unwritable) + u": Read-only file system"_s ||
                 failure == path(unwritable) + u": Permission denied"_s,
             qPrintable(failure));
}

void ReplacementTest::refusesAnothersFolder() {
    // The path of /…/my.apps/Lumora.app up to the first ".app".
    QDir().mkpath(path(u"my.app"_s));
    QCOMPARE(removalFailure(path(u"my.app"_s), path(u"my.apps/Lumora.app"_s)),
             u"App bundle not found"_s);
}

void ReplacementTest::refusesADiskThatIsTooSmall() {
    const SampleBundle newBundle(path(u"new/Lumora.app"_s), u"0.2.0"_s, mebibyte / 2);
    const SampleBundle larger(path(u"larger/Lumora.app"_s), u"0.2.0"_s, 2 * mebibyte);
    const TightSpace disk(path(u"apps"_s), mebibyte);
    if (!disk.isDisk())
        QSKIP("Nobody may mount a small disk here.");
    QCOMPARE(roomFailure(app(), newBundle.path()), QString());
    QCOMPARE(roomFailure(app(), larger.path()), app() + u": "_s + disk.complaint());
}

void ReplacementTest::refusesADiskWithTooFewBlocks() {
    const SampleBundle newBundle(path(u"new/Lumora.app"_s), u"0.2.0"_s);
    addFiles(newBundle, 300);
    const TightSpace disk(path(u"apps"_s), mebibyte);
    if (!disk.isDisk())
        QSKIP("Nobody may mount a small disk here.");
    QCOMPARE(roomFailure(app(), newBundle.path()), app() + u": "_s + disk.complaint());
}

void ReplacementTest::refusesADiskWithTooFewEntries() {
    const SampleBundle newBundle(path(u"new/Lumora.app"_s), u"0.2.0"_s);
    addFiles(newBundle, 30);
    const TightSpace disk(path(u"apps"_s), mebibyte, 30);
    if (!disk.isDisk())
        QSKIP("Nobody may mount a small disk here.");
    QCOMPARE(roomFailure(app(), newBundle.path()), app() + u": "_s + disk.complaint());
}

void ReplacementTest::countsTheOldBundlesEntries() {
    const SampleBundle newBundle(path(u"new/Lumora.app"_s), u"0.2.0"_s);
    addFiles(newBundle, 30);
    const TightSpace disk(path(u"apps"_s), mebibyte, 50);
    if (!disk.isDisk())
        QSKIP("Nobody may mount a small disk here.");
    const SampleBundle old(app(), u"0.1.9"_s);
    addFiles(old, 30);
    QCOMPARE(roomFailure(app(), newBundle.path()), QString());
}

void ReplacementTest::countsTheOldBundlesRoom() {
    const TightSpace disk(path(u"apps"_s), mebibyte);
    if (!disk.isDisk())
        QSKIP("Nobody may mount a small disk here.");
    const SampleBundle old(app(), u"0.1.9"_s, mebibyte * 3 / 4);
    const SampleBundle newBundle(path(u"new/Lumora.app"_s), u"0.2.0"_s, mebibyte / 2);
    QCOMPARE(roomFailure(app(), newBundle.path()), QString());
}

void ReplacementTest::needsNoRoomOnTheSameDisk() {
    const TightSpace disk(path(u"apps"_s), mebibyte);
    if (!disk.isDisk())
        QSKIP("Nobody may mount a small disk here.");
    const SampleBundle newBundle(path(u"apps/new/Lumora.app"_s), u"0.2.0"_s, mebibyte * 3 / 4);
    QCOMPARE(roomFailure(app(), newBundle.path()), QString());
}

QTEST_GUILESS_MAIN(ReplacementTest)
#include "tst_replacement.moc"
