// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <ctime>

/// The processor time that this thread has used since it was started, in milliseconds.
///
/// Unlike the time on the wall it doesn't tell how busy the machine is otherwise.
class ThreadTime final {
public:
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
    [[nodiscard]] static double now() {
        constexpr double perSecond = 1'000;
        constexpr double perNanosecond = 1e-6;
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * perSecond +
               static_cast<double>(time.tv_nsec) * perNanosecond;
    }

    double m_start{now()};
};
