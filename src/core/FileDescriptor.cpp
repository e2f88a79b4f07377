// SPDX-License-Identifier: MIT
#include "FileDescriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace {

constexpr int firstOrdinaryDescriptor = STDERR_FILENO + 1;

int openCloseOnExecPipe(int (&ends)[2]) {
#ifdef __linux__
    return ::pipe2(ends, O_CLOEXEC);
#else
    if (::pipe(ends) != 0)
        return -1;
    ::fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    ::fcntl(ends[1], F_SETFD, FD_CLOEXEC);
    return 0;
#endif
}

/// An application started without standard streams gets them as pipe ends, which
/// would then be overwritten while the child's own streams are being set up.
FileDescriptor aboveStandardStreams(int fd) {
    FileDescriptor original(fd);
    if (fd >= firstOrdinaryDescriptor)
        return original;
    return FileDescriptor(::fcntl(fd, F_DUPFD_CLOEXEC, firstOrdinaryDescriptor));
}

} // namespace

FileDescriptor::FileDescriptor(FileDescriptor&& other) noexcept
    : m_fd(std::exchange(other.m_fd, -1)) {}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    std::swap(m_fd, other.m_fd);
    return *this;
}

FileDescriptor::~FileDescriptor() {
    close();
}

void FileDescriptor::close() {
    if (m_fd >= 0)
        ::close(std::exchange(m_fd, -1));
}

std::string FileDescriptor::readToEnd() const {
    constexpr std::size_t firstChunk = 65536;
    std::string bytes(firstChunk, '\0');
    std::size_t used = 0;
    for (;;) {
        const ssize_t count = ::read(m_fd, bytes.data() + used, bytes.size() - used);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        used += static_cast<std::size_t>(count);
        if (used == bytes.size())
            bytes.resize(2 * bytes.size());
    }
    bytes.resize(used);
    return bytes;
}

int Pipe::open() {
    int ends[2];
    if (openCloseOnExecPipe(ends) != 0)
        return errno;
    readEnd = aboveStandardStreams(ends[0]);
    writeEnd = aboveStandardStreams(ends[1]);
    return readEnd.get() < 0 || writeEnd.get() < 0 ? EMFILE : 0;
}

void Pipe::enlarge() const {
#ifdef F_SETPIPE_SZ
    // An unprivileged user may be near the system's limit for pipe memory: less is better than
    // none.
    constexpr int largest = 1024 * 1024;
    constexpr int usual = 64 * 1024;
    for (int capacity = largest; capacity > usual; capacity /= 2) {
        if (::fcntl(writeEnd.get(), F_SETPIPE_SZ, capacity) >= 0)
            return;
    }
#endif
}
