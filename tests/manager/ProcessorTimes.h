// SPDX-License-Identifier: MIT
#pragma once

#include <ctime>

/// The processor time that is spent from here on, by this thread and by all of the process.
///
/// What else the machine has to do makes both longer alike.
class ProcessorTimes final {
public:
    [[nodiscard]] double shareOfThisThread() const {
        return (seconds(CLOCK_THREAD_CPUTIME_ID) - m_thread) /
               (seconds(CLOCK_PROCESS_CPUTIME_ID) - m_process);
    }

private:
    static double seconds(clockid_t clock) {
        constexpr double nanosecond = 1e-9;
        timespec time{};
        ::clock_gettime(clock, &time);
        return static_cast<double>(time.tv_sec) + nanosecond * static_cast<double>(time.tv_nsec);
    }

    double m_thread{seconds(CLOCK_THREAD_CPUTIME_ID)};
    double m_process{seconds(CLOCK_PROCESS_CPUTIME_ID)};
};
