// SPDX-License-Identifier: MIT
#pragma once

#include <sys/resource.h>
#include <unistd.h>

/// Lets this process open only so many more file descriptors for as long as it lives.
class DescriptorLimit final {
public:
    explicit DescriptorLimit(int more) {
        ::getrlimit(RLIMIT_NOFILE, &m_before);
        rlimit scarce = m_before;
        scarce.rlim_cur = static_cast<rlim_t>(lowestFree() + more);
        ::setrlimit(RLIMIT_NOFILE, &scarce);
    }

    DescriptorLimit(const DescriptorLimit&) = delete;
    DescriptorLimit& operator=(const DescriptorLimit&) = delete;

    ~DescriptorLimit() { ::setrlimit(RLIMIT_NOFILE, &m_before); }

    /// The number that the next opened descriptor gets.
    [[nodiscard]] static int lowestFree() {
        const int fd = ::dup(STDERR_FILENO);
        ::close(fd);
        return fd;
    }

private:
    rlimit m_before{};
};
