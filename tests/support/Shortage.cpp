// SPDX-License-Identifier: MIT
#include "Shortage.h"

#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <system_error>

#ifdef __linux__
#include <sched.h>
#include <sys/mount.h>
#endif

namespace {

#ifdef __linux__
/// What is mounted in a namespace of the test's own nobody else sees, and it goes when the
/// test does.
bool hasOwnMounts() {
    static const bool has = ::unshare(CLONE_NEWNS) == 0 &&
                            ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return has;
}

bool mountOver(const char* path, unsigned long flags) {
    return hasOwnMounts() && ::mount(path, path, nullptr, MS_BIND, nullptr) == 0 &&
           ::mount(nullptr, path, nullptr, MS_REMOUNT | MS_BIND | flags, nullptr) == 0;
}

bool mountReadOnly(const char* path) {
    return mountOver(path, MS_RDONLY);
}

bool mountWithoutPrograms(const char* path) {
    return mountOver(path, MS_NOEXEC);
}

bool mountSmallDisk(const char* path, qint64 bytes, int entries) {
    const QByteArray options =
        "mode=0777,size=" + QByteArray::number(bytes) + ",nr_inodes=" + QByteArray::number(entries);
    return hasOwnMounts() && ::mount("lumora", path, "tmpfs", 0, options.constData()) == 0;
}

void unmount(const char* path) {
    ::umount2(path, MNT_DETACH);
}
#else
bool mountReadOnly(const char*) {
    return false;
}

bool mountWithoutPrograms(const char*) {
    return false;
}

bool mountSmallDisk(const char*, qint64, int) {
    return false;
}

void unmount(const char*) {}
#endif

} // namespace

ReadOnlyFolder::ReadOnlyFolder(const QString& path)
    : m_path(QFile::encodeName(path)), m_isMounted(mountReadOnly(m_path.constData())) {
    if (m_isMounted)
        return;
    ::chmod(m_path.constData(), S_IRUSR | S_IXUSR);
    if (::access(m_path.constData(), W_OK) == 0)
        qFatal("%s stays writable: the test needs to be able to mount", m_path.constData());
}

ReadOnlyFolder::~ReadOnlyFolder() {
    if (m_isMounted)
        unmount(m_path.constData());
    else
        ::chmod(m_path.constData(), S_IRWXU);
}

NoProgramsFolder::NoProgramsFolder(const QString& path)
    : m_path(QFile::encodeName(path)), m_isMounted(mountWithoutPrograms(m_path.constData())) {}

NoProgramsFolder::~NoProgramsFolder() {
    if (m_isMounted)
        unmount(m_path.constData());
}

TightSpace::TightSpace(const QString& path, qint64 bytes, int entries)
    : m_path(QFile::encodeName(path)),
      m_isMounted(mountSmallDisk(m_path.constData(), bytes, entries)) {
    if (m_isMounted)
        return;
    std::signal(SIGXFSZ, SIG_IGN);
    ::getrlimit(RLIMIT_FSIZE, &m_before);
    rlimit limit = m_before;
    limit.rlim_cur = static_cast<rlim_t>(bytes);
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

TightSpace::~TightSpace() {
    if (m_isMounted)
        unmount(m_path.constData());
    else
        ::setrlimit(RLIMIT_FSIZE, &m_before);
}

void TightSpace::leaveBlocks(int count) const {
    const QByteArray block(::getpagesize(), 'x');
    QFile other(QFile::decodeName(m_path) + QStringLiteral("/other"));
    if (!isDisk() || !other.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        qFatal("%s is no disk that can be filled", m_path.constData());
    while (other.write(block) == block.size()) {
    }
    other.resize(other.size() - count * block.size());
}

QString TightSpace::complaint() const {
    const int error = m_isMounted ? ENOSPC : EFBIG;
    return QString::fromStdString(std::generic_category().message(error));
}
