// SPDX-License-Identifier: MIT
#include "Replacement.h"

#include "ApplicationBundle.h"
#include "UpdateFailure.h"

#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace fs = std::filesystem;

namespace {

/// Asks the system rather than reading the mode: the file system may be read-only.
void checkWritable(const fs::path& folder) {
    if (::access(folder.c_str(), W_OK | X_OK) != 0)
        throw UpdateFailure(QString::fromStdString(folder.string()), errno);
}

qint64 sizeOf(const QString& folder) {
    std::error_code error;
    qint64 size = 0;
    for (fs::recursive_directory_iterator entry(folder.toStdString(), error), end;
         !error && entry != end; entry.increment(error)) {
        std::error_code isGone;
        if (entry->symlink_status(isGone).type() == fs::file_type::regular)
            size += static_cast<qint64>(entry->file_size(isGone));
    }
    return size;
}

bool leadsOut(const fs::path& link, const fs::path& folder) {
    std::error_code error;
    // From the target as it is written: there may be nothing at it yet.
    fs::path target = fs::read_symlink(link, error);
    if (!error)
        target = fs::weakly_canonical(link.parent_path() / target, error);
    if (error)
        return true;
    return std::ranges::mismatch(folder, target).in1 != folder.end();
}

bool hasLinkLeadingOut(const fs::path& bundle) {
    std::error_code error;
    const fs::path folder = fs::canonical(bundle, error);
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->is_symlink(error) && leadsOut(entry->path(), folder))
            return true;
    }
    // What can't be looked into can't be vouched for.
    return static_cast<bool>(error);
}

bool agreesWithManifest(const QString& bundle) {
    const QFileInfo entry(bundle + u"/Contents/Resources/manifest.txt"_s);
    if (!entry.exists())
        return true;
    // To open a pipe or a device may take for ever, and so may a file that is all hole.
    constexpr qint64 longest = 1024 * 1024;
    QFile manifest(entry.filePath());
    if (!entry.isFile() || entry.size() > longest || !manifest.open(QIODevice::ReadOnly))
        return false;
    // On a full disk the manifest, too, ends early.
    bool isNumber = false;
    qlonglong missing = manifest.readLine().trimmed().toLongLong(&isNumber);
    for (; !manifest.atEnd(); --missing) {
        const QString line = QString::fromUtf8(manifest.readLine().chopped(1));
        const QFileInfo file(bundle + u'/' + line.section(u' ', 1));
        if (!file.isFile() || QString::number(file.size()) != line.section(u' ', 0, 0))
            return false;
    }
    return isNumber && missing == 0;
}

} // namespace

void Replacement::checkRemovable(const QString& appPath, const ApplicationBundle& running) {
    const fs::path app = appPath.toStdString();
    checkWritable(app.parent_path());
    if (!QFileInfo::exists(appPath))
        return;
    // A folder such as my.apps around the bundle makes its path end too early.
    if (running.mainPath() != appPath && !running.mainPath().startsWith(appPath + u'/'))
        throw UpdateFailure(UpdateError::appBundleNotFound);
    checkWritable(app);
    std::error_code error;
    for (fs::recursive_directory_iterator entry(app, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code isGone;
        if (entry->symlink_status(isGone).type() == fs::file_type::directory)
            checkWritable(entry->path());
    }
}

bool Replacement::isWhole(const QString& newPath) {
    const QFileInfo bundle(newPath);
    return bundle.isDir() && !bundle.isSymLink() && !hasLinkLeadingOut(newPath.toStdString()) &&
           QFileInfo(ApplicationBundle::executableIn(newPath)).isFile() &&
           agreesWithManifest(newPath);
}

void Replacement::checkRoom(const QString& appPath, const QString& newPath) {
    const QStorageInfo target(QFileInfo(appPath).path());
    // Within a file system nothing is copied.
    if (target == QStorageInfo(newPath))
        return;
    if (target.bytesAvailable() + sizeOf(appPath) < sizeOf(newPath))
        throw UpdateFailure(appPath, ENOSPC);
}
