// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

/// Owns one open file descriptor and closes it.
class FileDescriptor final {
public:
    FileDescriptor() = default;

    explicit FileDescriptor(int fd) : m_fd(fd) {}

    FileDescriptor(FileDescriptor&& other) noexcept;
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    ~FileDescriptor();

    [[nodiscard]] int get() const { return m_fd; }

    void close();

    /// The most that is read of a stream: 1 GiB, some forty times the report of all formulae.
    static constexpr std::size_t longestContent = std::size_t{1024} * 1024 * 1024;

    /// Reads until end of file, blocking. A read error counts as end of file.
    ///
    /// Returns 0, or ENOMEM without memory for the bytes, or EFBIG if there are more than
    /// `longest`. There are no bytes then, but all have been read: nobody is left blocked in
    /// writing them.
    [[nodiscard]] int readToEnd(std::string& bytes, std::size_t longest = longestContent) const;

private:
    int m_fd{-1};
};

/// The two ends of a pipe; neither is inherited across an exec.
struct Pipe final {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;

    /// Opens a pipe whose descriptors lie above the three standard streams, so that
    /// a child's standard streams can be set up in any order. Returns 0 or errno.
    [[nodiscard]] int open();

    /// Gives the pipe the largest capacity the system grants, 1 MiB at the most.
    void enlarge() const;
};
