// SPDX-License-Identifier: MIT
#pragma once

#include "FileDescriptor.h"

#include <sys/types.h>

/// A small process that reads both pipes of a command to their ends if this process ends first.
///
/// A `brew` whose reader is gone dies of a broken pipe at its next line, perhaps half-way
/// through an upgrade. The guard waits on a pipe that nobody but this process can write to, so
/// that any end of this process wakes it: also one that nothing can be done about, as by SIGKILL.
class PipeGuard final {
public:
    /// Starts the guard of a command that is about to be started, so that the command never runs
    /// without. If the guard can't be started, it does: that is better than no command at all.
    PipeGuard(const FileDescriptor& standardOutput, const FileDescriptor& standardError);
    PipeGuard(PipeGuard&& other) noexcept;
    PipeGuard& operator=(PipeGuard&& other) noexcept;
    /// Ends the guard, if that hasn't been done, and waits until it is gone.
    ~PipeGuard();

    /// Ends the guard, which nobody needs once both pipes have been read to their ends.
    void end() const;

private:
    FileDescriptor m_life;
    pid_t m_pid{-1};
};
