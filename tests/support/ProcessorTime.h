// SPDX-License-Identifier: MIT
#pragma once

#include <ctime>

/// The processor time that has been used since it was made, in milliseconds: by this thread, or
/// by what another clock of the system's looks at.
///
/// Unlike the time on the wall it doesn't tell how busy the machine is otherwise.
class ProcessorTime final {
public:
    explicit ProcessorTime(clockid_t clock = CLOCK_THREAD_CPUTIME_ID) : m_clock(clock) {}

    [[nodiscard]] double elapsed() const { return now() - m_start; }

    /// How many times slower a build with sanitizers may be.
    [[nodiscard]] static double slowness() {
#ifdef __SANITIZE_ADDRESS__
        return 6;
#else
        return 1;
#endif
    }

private:
    [[nodiscard]] double now() const {
        constexpr double perSecond = 1'000;
        constexpr double perNanosecond = 1e-6;
        timespec time{};
        ::clock_gettime(m_clock, &time);
        return static_cast<double>(time.tv_sec) * perSecond +
               static_cast<double>(time.tv_nsec) * perNanosecond;
    }

    clockid_t m_clock;
    double m_start{now()};
};
