// SPDX-License-Identifier: MIT
#include "UpdateFiles.h"

#include "FileDescriptor.h"
#include "UpdateFailure.h"

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

using namespace Qt::StringLiterals;

#ifndef Q_OS_MACOS
namespace {

bool mayRunPrograms(const QString& folder) {
    struct statvfs system {};

    return ::statvfs(QFile::encodeName(folder).constData(), &system) != 0 ||
           (system.f_flag & ST_NOEXEC) == 0;
}

} // namespace
#endif

QString UpdateFiles::prepareFolder() {
#ifdef Q_OS_MACOS
    return QDir::tempPath();
#else
    QString parent = QDir::tempPath();
    if (!mayRunPrograms(parent)) {
        parent = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
        QDir().mkpath(parent);
    }
    QString path = parent + u"/lumora-"_s + QString::number(::geteuid());
    makePrivateFolder(path);
    if (!mayRunPrograms(path))
        throw UpdateFailure(path + u": no program may be run there."_s);
    return path;
#endif
}

void UpdateFiles::makePrivateFolder(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    if (::mkdir(name.constData(), S_IRWXU) != 0 && errno != EEXIST)
        throw UpdateFailure(path, errno);
    // What is looked at is what was opened, and a link isn't followed to it.
    const FileDescriptor folder(
        ::open(name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));

    struct stat status {};

    if (folder.get() < 0 || ::fstat(folder.get(), &status) != 0)
        throw UpdateFailure(path, errno);
    if (status.st_uid != ::geteuid() || (status.st_mode & (S_IRWXG | S_IRWXO)) != 0)
        throw UpdateFailure(path + u" is open to other users. Please remove it and try again."_s);
}

bool UpdateFiles::writeAll(QIODevice& device, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const qint64 count = device.write(bytes.data(), bytes.size());
        if (count <= 0)
            return false;
        bytes = bytes.sliced(count);
    }
    return true;
}

void UpdateFiles::writeAtomically(const QString& path, const QByteArray& content) {
    QTemporaryFile file(path + u".XXXXXX"_s);
    if (!file.open() || !writeAll(file, content))
        throw UpdateFailure(path + u": "_s + file.errorString());
    moveInto(file, path);
}

void UpdateFiles::moveInto(QTemporaryFile& file, const QString& path) {
    if (!file.flush())
        throw UpdateFailure(path + u": "_s + file.errorString());
    std::error_code error;
    // QFile's own renaming refuses to replace, and its safe writing follows links.
    std::filesystem::rename(file.fileName().toStdString(), path.toStdString(), error);
    if (error)
        throw UpdateFailure(path, error);
    file.setAutoRemove(false);
}
