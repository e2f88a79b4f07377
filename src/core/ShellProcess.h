// SPDX-License-Identifier: MIT
#pragma once

#include "FileDescriptor.h"
#include "PipeGuard.h"

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

/// Why a child process could not be started, or what it printed not be kept, in words for the
/// user (UTF-8).
struct LaunchError final {
    std::string description;

    [[nodiscard]] static LaunchError outOfMemory();

    bool operator==(const LaunchError&) const = default;
};

/// A running child shell with its standard output and standard error on two pipes.
///
/// Standard input, environment and working directory are the application's own; the session
/// isn't (see SpawnAttributes). A guard stands beside the child. The destructor closes the
/// pipes and ends the guard, but doesn't wait for the child: call waitForExit().
class ShellProcess final {
public:
    /// The shell that every command runs through.
    static constexpr const char* zsh = "/bin/zsh";

    /// Starts `shell` with `arguments` (without the program name).
    [[nodiscard]] static std::variant<ShellProcess, LaunchError>
    start(const std::vector<std::string>& arguments, const char* shell = zsh);

    [[nodiscard]] const FileDescriptor& standardOutput() const { return m_standardOutput; }

    [[nodiscard]] const FileDescriptor& standardError() const { return m_standardError; }

    /// For when both pipes have been read to their ends: the guard goes while the child does.
    void endGuard() const { m_guard.end(); }

    /// Blocks until the child has exited; 128 + the signal's number if one ended it.
    [[nodiscard]] std::int32_t waitForExit() const;

private:
    ShellProcess(pid_t pid, FileDescriptor standardOutput, FileDescriptor standardError,
                 PipeGuard guard);

    pid_t m_pid{-1};
    FileDescriptor m_standardOutput;
    FileDescriptor m_standardError;
    PipeGuard m_guard;
};

/// Prepares this process for the children it will start; call it once, before any thread.
///
/// Standard input becomes the null device, which the children inherit: a `brew` that
/// asks a question finds end of file instead of waiting for an answer nobody can give.
/// SIGCHLD gets its default action, without which no exit status can be collected.
void prepareForChildProcesses();
