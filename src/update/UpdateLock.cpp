// SPDX-License-Identifier: MIT
#include "UpdateLock.h"

#include "FileDescriptor.h"
#include "UpdateFailure.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

// The folder itself is what is locked: a lock file would be one more to be left behind.
UpdateLock::UpdateLock(const QString& folder)
    : m_folder(std::make_unique<FileDescriptor>(
          ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))) {
    if (::flock(m_folder->get(), LOCK_EX | LOCK_NB) == 0)
        return;
    if (errno == EWOULDBLOCK)
        throw UpdateFailure::anotherUpdate();
    throw UpdateFailure(folder, errno);
}

UpdateLock::~UpdateLock() = default;
