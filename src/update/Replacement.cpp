// SPDX-License-Identifier: MIT
#include "Replacement.h"

#include "ApplicationBundle.h"
#include "UpdateFailure.h"

#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace fs = std::filesystem;

namespace {

/// Asks the system rather than reading the mode: the file system may be read-only.
void checkWritable(const fs::path& folder) {
    if (::access(folder.c_str(), W_OK | X_OK) != 0)
        throw UpdateFailure(QString::fromStdString(folder.string()), errno);
}

/// What a folder takes of a disk, itself included.
struct Room final {
    /// As many as it has now, wherever it is.
    std::uintmax_t bytesTaken{};
    /// As many as a copy takes at the most.
    std::uintmax_t blocksNeeded{};
    std::uintmax_t entries{};
};

Room roomOf(const fs::path& folder, std::uintmax_t blockSize) {
    constexpr std::uintmax_t unit = 512;
    Room room;
    const auto add = [&room, blockSize](const fs::path& path) {
        struct stat status {};

        if (::lstat(path.c_str(), &status) != 0)
            return;
        const auto size = static_cast<std::uintmax_t>(status.st_size);
        // What names and pointers are kept in counts too.
        room.blocksNeeded += S_ISREG(status.st_mode) ? (size + blockSize - 1) / blockSize : 1;
        room.bytesTaken += static_cast<std::uintmax_t>(status.st_blocks) * unit;
        ++room.entries;
    };
    std::error_code error;
    add(folder);
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        add(entry->path());
    return room;
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
    constexpr qint64 longest = qint64{1024} * 1024;
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

    struct statvfs disk {};

    if (::statvfs(QFile::encodeName(target.rootPath()).constData(), &disk) != 0)
        throw UpdateFailure(appPath, errno);
    const Room freed = roomOf(appPath.toStdString(), disk.f_frsize);
    const Room needed = roomOf(newPath.toStdString(), disk.f_frsize);
    const bool hasBlocks = disk.f_bavail + freed.bytesTaken / disk.f_frsize >= needed.blocksNeeded;
    // Some file systems have no table of entries that could be full.
    const bool hasEntries = disk.f_files == 0 || disk.f_favail + freed.entries >= needed.entries;
    if (!hasBlocks || !hasEntries)
        throw UpdateFailure(appPath, ENOSPC);
}
