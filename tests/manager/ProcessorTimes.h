// SPDX-License-Identifier: MIT
#pragma once

#include "ProcessorTime.h"

/// The processor time that is spent from here on, by this thread and by all of the process.
///
/// What else the machine has to do makes both longer alike.
class ProcessorTimes final {
public:
    [[nodiscard]] double shareOfThisThread() const {
        return m_thread.elapsed() / m_process.elapsed();
    }

private:
    ProcessorTime m_thread;
    ProcessorTime m_process{CLOCK_PROCESS_CPUTIME_ID};
};
