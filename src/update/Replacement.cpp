// SPDX-License-Identifier: MIT
#include "Replacement.h"

#include "ApplicationBundle.h"
#include "AutoUpdater.h"
#include "UpdateFailure.h"

#include <QFileInfo>
#include <QStorageInfo>

#include <unistd.h>

#include <cerrno>
#include <filesystem>

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

} // namespace

void Replacement::checkRemovable(const QString& appPath, const ApplicationBundle& running) {
    const fs::path app = appPath.toStdString();
    checkWritable(app.parent_path());
    if (!QFileInfo::exists(appPath))
        return;
    // A folder such as my.apps around the bundle makes its path end too early.
    if (running.mainPath() != appPath && !running.mainPath().startsWith(appPath + u'/'))
        throw UpdateFailure(AutoUpdater::description(AutoUpdater::UpdateError::appBundleNotFound));
    checkWritable(app);
    std::error_code error;
    for (fs::recursive_directory_iterator entry(app, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code isGone;
        if (entry->symlink_status(isGone).type() == fs::file_type::directory)
            checkWritable(entry->path());
    }
}

void Replacement::checkRoom(const QString& appPath, const QString& newPath) {
    const QStorageInfo target(QFileInfo(appPath).path());
    // Within a file system nothing is copied.
    if (target == QStorageInfo(newPath))
        return;
    if (target.bytesAvailable() + sizeOf(appPath) < sizeOf(newPath))
        throw UpdateFailure(appPath, ENOSPC);
}
