// SPDX-License-Identifier: MIT
#include "FreshHome.h"
#include "UpdateScene.h"

#include <QRandomGenerator>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

/// The window has to stay alive whatever the updater waits for.
class LivelinessTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keepsTheEventLoopGoing();
    void keepsItGoingWhileItChecksWhatItHasUnpacked();

private:
    FreshHome m_home;
    ReleaseServer m_server;
};

namespace {

/// Counts the turns of the event loop in which a condition holds.
class Heartbeat final {
public:
    explicit Heartbeat(std::function<bool()> condition) {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer,
                         [this, condition = std::move(condition)] { m_beats += condition(); });
        m_timer.start(1);
    }

    [[nodiscard]] int beats() const { return m_beats; }

private:
    QTimer m_timer;
    int m_beats{};
};

/// Hard to unpack: noise that can't be compressed.
void makeLarge(const SampleBundle& bundle) {
    constexpr qsizetype mebibytes = 48;
    QFile file(bundle.path() + u"/Contents/noise"_s);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("The bundle could not be made large");
    QList<quint32> noise(1024 * 1024 / sizeof(quint32));
    for (qsizetype i = 0; i < mebibytes; ++i) {
        QRandomGenerator(static_cast<quint32>(i)).fillRange(noise.data(), noise.size());
        file.write(reinterpret_cast<const char*>(noise.constData()), 1024 * 1024);
    }
}

/// Takes its time to check, only to be found not to agree with its manifest.
void makeManyFiles(const SampleBundle& bundle) {
    constexpr int files = 20'000;
    const QString contents = bundle.path() + u"/Contents"_s;
    QDir().mkdir(contents + u"/many"_s);
    bool isMade = true;
    for (int i = 0; i < files; ++i)
        isMade &= QFile::link(u"."_s, contents + u"/many/"_s + QString::number(i));
    QFile last(contents + u"/z"_s);
    QFile manifest(contents + u"/Resources/manifest.txt"_s);
    isMade &= last.open(QIODevice::WriteOnly) && manifest.open(QIODevice::Append) &&
              manifest.write("1 missing\n") > 0;
    if (!isMade)
        qFatal("The bundle could not be filled");
}

} // namespace

void LivelinessTest::keepsTheEventLoopGoing() {
    UpdateScene scene(m_server);
    const SampleBundle bundle(scene.path(u"new/Lumora.app"_s), u"0.2.0"_s);
    makeLarge(bundle);
    scene.offerArchiveOf(bundle, u"honest"_s, u"0.2.0"_s);
    const QString downloadURL = m_server.address() + u"/archive.tar.gz"_s;
    m_server.answer(ReleaseServer::latestPath(),
                    {{u"gate"_s, m_server.gate(u"latest"_s)},
                     {u"text"_s, u"{\"tag_name\": \"0.2.0\", \"assets\": [{\"name\": \"a.tar.gz\", "
                                 "\"browser_download_url\": \""_s +
                                     downloadURL + u"\"}]}"_s}});
    m_server.answer(u"/archive.tar.gz"_s, {{u"gate"_s, m_server.gate(u"archive"_s)},
                                           {u"halfway"_s, m_server.gate(u"rest"_s)},
                                           {u"file"_s, scene.servedArchive()}});

    constexpr int enough = 30;
    const auto always = [] { return true; };
    scene.updater().checkForUpdatesManually();
    QTRY_COMPARE(m_server.requestsFor(ReleaseServer::latestPath()), 1);
    const Heartbeat check(always);
    QTRY_VERIFY(check.beats() > enough);
    m_server.open(u"latest"_s);

    QTRY_COMPARE(m_server.requestsFor(u"/archive.tar.gz"_s), 1);
    const Heartbeat connecting(always);
    QTRY_VERIFY(connecting.beats() > enough);
    m_server.open(u"archive"_s);

    // More has been sent than any buffer on the way can hold.
    QTRY_VERIFY_WITH_TIMEOUT(m_server.hasReached(u"rest"_s), UpdateScene::patience);
    const Heartbeat downloading(always);
    QTRY_VERIFY(downloading.beats() > enough);

    const QString unpackFolder = scene.updateFile(u"lumora-update-extract"_s);
    const Heartbeat unpacking([&] { return QFile::exists(unpackFolder) && !scene.isAskedToEnd(); });
    m_server.open(u"rest"_s);
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isAskedToEnd(), scene.description(), UpdateScene::patience);
    QVERIFY2(unpacking.beats() > 3, qPrintable(QString::number(unpacking.beats())));
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isSwapDone(), scene.description(), UpdateScene::patience);
}

void LivelinessTest::keepsItGoingWhileItChecksWhatItHasUnpacked() {
    UpdateScene scene(m_server);
    const SampleBundle bundle(scene.path(u"new/Lumora.app"_s), u"0.2.0"_s);
    makeManyFiles(bundle);
    scene.offerArchiveOf(bundle, u"honest"_s, u"0.2.0"_s);
    // Archives are packed in the order of names.
    const QString last = scene.updateFile(u"lumora-update-extract/Lumora.app/Contents/z"_s);
    const Heartbeat checking(
        [&] { return QFile::exists(last) && scene.alerts().shown().size() < 2; });
    scene.updater().checkForUpdatesManually();
    QTRY_COMPARE_WITH_TIMEOUT(scene.alerts().shown().size(), 2, UpdateScene::patience);
    QCOMPARE(scene.alerts().shown().last().text, u"Extract failed"_s);
    constexpr int enough = 20;
    QVERIFY2(checking.beats() > enough, qPrintable(QString::number(checking.beats())));
}

QTEST_GUILESS_MAIN(LivelinessTest)
#include "tst_liveliness.moc"
