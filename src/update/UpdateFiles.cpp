// SPDX-License-Identifier: MIT
#include "UpdateFiles.h"

#include "FileDescriptor.h"
#include "UpdateFailure.h"

#include <QDir>
#include <QTemporaryFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

using namespace Qt::StringLiterals;

QString UpdateFiles::prepareFolder() {
#ifdef Q_OS_MACOS
    return QDir::tempPath();
#else
    QString path = QDir::tempPath() + u"/lumora-"_s + QString::number(::geteuid());
    makePrivateFolder(path);
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
