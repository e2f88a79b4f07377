// SPDX-License-Identifier: MIT
#include "AutoUpdater.h"
#include "Background.h"
#include "CompareVersions.h"
#include "FetchRequest.h"
#include "Replacement.h"
#include "RunTool.h"
#include "TrialRun.h"
#include "UpdateFiles.h"
#include "UpdateScript.h"

#include <QCoroFuture>
#include <QCryptographicHash>
#include <QFile>
#include <QPointer>
#include <QTemporaryFile>
#include <QUrl>

#include <filesystem>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

void checkVersion(const QString& version) {
    if (!isPlainVersion(version))
        throw UpdateFailure(u"The version \""_s + version + u"\" is not a valid version."_s);
}

void checkPath(const QString& path) {
    if (!UpdateScript::canName(path))
        throw UpdateFailure(path + u": a path with quotes, $ or \\ can't be updated."_s);
}

/// Only what is in the way may stay if it can't be removed: a folder that isn't empty.
void makeEmptyFolder(const QString& path) {
    std::error_code error;
    std::filesystem::remove_all(path.toStdString(), error);
    std::filesystem::create_directories(path.toStdString(), error);
    if (error)
        throw UpdateFailure(path, error);
}

QCoro::Task<> download(std::shared_ptr<const QString> program, QUrl address, QString path) {
    QTemporaryFile file(path + u".XXXXXX"_s);
    if (!file.open())
        throw UpdateFailure(path + u": "_s + file.errorString());
    FetchRequest request{.program = *program, .address = address, .patience = 1min};
    // Otherwise a server could have the archive unpacked half-way.
    request.headers.append(u"Accept-Encoding: identity"_s);
    if (!co_await fetchInto(file.fileName(), std::move(request)))
        throw UpdateFailure(UpdateError::downloadFailed);
    std::error_code ignored;
    std::filesystem::remove_all(path.toStdString(), ignored);
    UpdateFiles::moveInto(file, path);
}

/// Such as "sha256:01ef…". One of another kind says nothing.
bool agreesWithDigest(const QString& path, const QString& digest) {
    const QString kind = u"sha256:"_s;
    if (!digest.startsWith(kind, Qt::CaseInsensitive))
        return true;
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) &&
           digest.sliced(kind.size())
                   .compare(QString::fromLatin1(hash.result().toHex()), Qt::CaseInsensitive) == 0;
}

QCoro::Task<> unpack(QString archive, QString folder) {
    const QStringList arguments{u"-xzf"_s, archive, u"-C"_s, folder};
    // Its exit status says less than what has come out of it.
    co_await runTool(u"/usr/bin/tar"_s, arguments);
}

QCoro::Task<> makeExecutable(QString script) {
    const QStringList arguments{u"+x"_s, script};
    co_await runTool(u"/bin/chmod"_s, arguments);
}

/// The script outlives the application.
void startDetached(const QString& script) {
    startTool(u"/bin/sh"_s, {u"-c"_s, u"nohup '"_s + script + u"' > /dev/null 2>&1 &"_s});
}

} // namespace

QCoro::Task<> AutoUpdater::downloadAndInstall(QString version, QString downloadURL,
                                              QString digest) {
    const QPointer<AutoUpdater> self(this);
    // No other updater offers anything.
    const ApplicationBundle bundle = m_bundle.value();
    const QUrl address(downloadURL, QUrl::StrictMode);
    if (!address.isValid() || m_lock)
        co_return;
    checkVersion(version);
    // Before anything is downloaded: the next launch tells of the update even if it fails.
    storeUpdatedVersion(version);

    const QString folder = UpdateFiles::prepareFolder();
    checkPath(folder);
    UpdateScript::checkTools();
    m_lock.emplace(folder);
    auto unlock = qScopeGuard([self] {
        if (self)
            self->m_lock.reset();
    });
    UpdateScript script;
    script.arguments = m_arguments;
    script.scriptPath = folder + u"/lumora-update.sh"_s;
    // The process that started it may be gone.
    if (co_await UpdateScript::isAtWork(script.scriptPath))
        throw UpdateFailure::anotherUpdate();
    if (!self)
        co_return;
    script.archivePath = folder + u"/lumora-update-"_s + version + u".tar.gz"_s;
    co_await download(m_program, address, script.archivePath);
    if (!self)
        co_return;
    const auto isWhatWasReleased = [path = script.archivePath, digest] {
        return agreesWithDigest(path, digest);
    };
    if (!co_await inBackground(isWhatWasReleased))
        throw UpdateFailure(UpdateError::downloadFailed);

    const auto appPath = bundle.outermostPath();
    if (!appPath)
        throw UpdateFailure(UpdateError::appBundleNotFound);
    script.appPath = *appPath;
    checkPath(script.appPath);
    script.unpackFolder = folder + u"/lumora-update-extract"_s;
    const auto makeReady = [script, bundle] {
        Replacement::checkRemovable(script.appPath, bundle);
        makeEmptyFolder(script.unpackFolder);
    };
    co_await inBackground(makeReady);
    co_await unpack(script.archivePath, script.unpackFolder);
    script.newPath = script.unpackFolder + u"/Lumora.app"_s;
    const auto check = [script] {
        if (!Replacement::isWhole(script.newPath))
            throw UpdateFailure(UpdateError::extractFailed);
        Replacement::checkRoom(script.appPath, script.newPath);
    };
    co_await inBackground(check);
    // What can't be started any more can't update itself either.
    constexpr std::chrono::seconds patience = 30s;
    const QString executable = ApplicationBundle::executableIn(script.newPath);
    if (!co_await answersWithVersion(executable, version, patience))
        throw UpdateFailure(UpdateError::appBundleNotFound);

    UpdateFiles::writeAtomically(script.scriptPath, script.text().toUtf8());
    co_await makeExecutable(script.scriptPath);
    if (!self)
        co_return;
    storeSwap();
    startDetached(script.scriptPath);
    unlock.dismiss();
    Q_EMIT terminationRequested();
}
