// SPDX-License-Identifier: MIT
#include "UpdateScene.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QProcess>
#include <QSettings>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// In the order of a release: what python takes longer for.
int packHonestly(const QString& archive, const QString& bundle) {
    const QFileInfo folder(bundle);
    return QProcess::execute(u"tar"_s, {u"--sort=name"_s, u"-czf"_s, archive, u"-C"_s,
                                        folder.path(), folder.fileName()});
}

} // namespace

UpdateScene::UpdateScene(ReleaseServer& server, RecordedAlerts::Answer answer)
    : m_server(server),
      m_alerts(answer),
      m_bundle(path(u"apps/Lumora.app"_s), u"0.1.9"_s),
      m_updater(m_server.source(), ApplicationBundle(m_bundle.path()), m_alerts),
      m_terminations(&m_updater, &AutoUpdater::terminationRequested) {
    m_server.reset();
    QSettings().clear();
    QDir().mkpath(temporaryFolder());
    QDir().mkpath(outside());
    QFile precious(outside() + u"/precious"_s);
    if (!precious.open(QIODevice::WriteOnly) || precious.write("precious\n") < 0)
        qFatal("The scene could not be set");
    precious.close();
    m_bundleBefore = SampleBundle::snapshot(m_bundle.path());
    m_outsideBefore = SampleBundle::snapshot(outside());
}

void UpdateScene::offerArchive(const QString& kind, const QString& version) {
    offerArchiveOf(SampleBundle(path(u"new/Lumora.app"_s), version), kind, version);
}

void UpdateScene::offerArchiveOf(const SampleBundle& bundle, const QString& kind,
                                 const QString& version) {
    const int status = kind == u"honest"_s
                           ? packHonestly(servedArchive(), bundle.path())
                           : QProcess::execute(QStringLiteral(LUMORA_PYTHON),
                                               {u"-B"_s, QStringLiteral(LUMORA_MAKE_ARCHIVE), kind,
                                                servedArchive(), bundle.path(), outside()});
    if (status != 0)
        qFatal("No archive of the kind %s could be made", qUtf8Printable(kind));
    m_server.answer(u"/archive.tar.gz"_s, {{u"file"_s, servedArchive()}});
    m_server.offer(version);
}

QString UpdateScene::digest() const {
    QFile archive(servedArchive());
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!archive.open(QIODevice::ReadOnly) || !hash.addData(&archive))
        qFatal("The archive could not be read");
    return u"sha256:"_s + QString::fromLatin1(hash.result().toHex());
}

QString UpdateScene::updateFolder() const {
#ifdef Q_OS_MACOS
    return temporaryFolder();
#else
    return temporaryFolder() + u"/lumora-"_s + QString::number(::geteuid());
#endif
}

QString UpdateScene::updateFile(const QString& name) const {
    return updateFolder() + u'/' + name;
}

QString UpdateScene::storedVersion() {
    return QSettings().value(u"Lumora.updatedToVersion"_s).toString();
}

bool UpdateScene::isBundleUntouched() const {
    return SampleBundle::snapshot(m_bundle.path()) == m_bundleBefore &&
           SampleBundle::startedVersion(m_bundle.path()) == u"0.1.9"_s;
}

bool UpdateScene::isOutsideUntouched() const {
    return SampleBundle::snapshot(outside()) == m_outsideBefore;
}

bool UpdateScene::isSwapDone() const {
    return m_bundle.lastStarted() == u"0.2.0"_s && QDir(updateFolder()).isEmpty();
}

QByteArray UpdateScene::description() const {
    QStringList lines;
    for (const UpdateAlerts::Alert& alert : m_alerts.shown())
        lines.append(u"alert: "_s + alert.title + u": "_s + alert.text);
    lines.append(u"started: "_s + m_bundle.lastStarted());
    QDirIterator entries(temporaryFolder(), QDir::AllEntries | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext())
        lines.append(u"file: "_s + entries.next());
    return lines.join(u'\n').toLocal8Bit();
}
