// SPDX-License-Identifier: MIT
#include "FileDescriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <new>
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

/// How many bytes have come; none at the end of the file.
std::size_t readSome(int fd, char* place, std::size_t room) {
    for (;;) {
        const ssize_t count = ::read(fd, place, room);
        if (count < 0 && errno == EINTR)
            continue;
        return count > 0 ? static_cast<std::size_t>(count) : 0;
    }
}

constexpr std::size_t firstRoom = 65536;

/// Returns 0 or errno.
int makeRoom(std::string& bytes, std::size_t most) {
    try {
        bytes.resize(std::min(std::max(2 * bytes.size(), firstRoom), most));
        return 0;
    } catch (const std::bad_alloc&) {
        return ENOMEM;
    }
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

int FileDescriptor::readToEnd(std::string& bytes, std::size_t longest) const {
    int error = 0;
    std::size_t used = 0;
    bytes.clear();
    while (error == 0) {
        if (used < bytes.size()) {
            const std::size_t count = readSome(m_fd, bytes.data() + used, bytes.size() - used);
            used += count;
            if (count == 0) {
                bytes.resize(used);
                return 0;
            }
        } else {
            error = used > longest ? EFBIG : makeRoom(bytes, longest + 1);
        }
    }
    bytes = std::string();
    std::array<char, firstRoom> dropped;
    while (readSome(m_fd, dropped.data(), dropped.size()) > 0) {
    }
    return error;
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
