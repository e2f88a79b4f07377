// SPDX-License-Identifier: MIT
#include "UpdateFolder.h"

#include "FileDescriptor.h"
#include "UpdateFailure.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

using namespace Qt::StringLiterals;

QString UpdateFolder::prepare() {
#ifdef Q_OS_MACOS
    return QDir::tempPath();
#else
    QString path = QDir::tempPath() + u"/lumora-"_s + QString::number(::geteuid());
    makePrivate(path);
    return path;
#endif
}

void UpdateFolder::makePrivate(const QString& path) {
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
