// SPDX-License-Identifier: MIT
#pragma once

#include "ShellProcess.h"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

/// What one run of a command printed and how it ended.
///
/// Both texts are valid UTF-8, whole and untrimmed; a stream whose bytes are not
/// valid UTF-8 is "". (The C library owns the names stdout and stderr as macros,
/// hence the longer ones here.)
struct CommandResult final {
    std::string standardOutput;
    std::string standardError;
    /// The exit status; 128 + the signal's number for a child that a signal ended.
    std::int32_t status{};

    bool operator==(const CommandResult&) const = default;
};

/// A command ran and ended, or could not be started, or what it printed could not be kept.
using RunOutcome = std::variant<CommandResult, LaunchError>;

/// The command line that the shell gets: the path as it stands, then each argument in
/// single quotes. A path with spaces or shell characters is interpreted by the shell.
[[nodiscard]] std::string commandLine(const std::string& brewPath,
                                      const std::vector<std::string>& args);

/// Runs `brew` once through a login shell and blocks until it has exited.
///
/// Call it from any thread but the interface's; calls don't share anything. Standard
/// output is read to its end before standard error is, so a child that fills the
/// standard-error pipe (1 MiB) waits until it has closed standard output. Whatever goes
/// wrong behind the shell (no brew at that path, an unknown command) is a result with
/// a non-zero status, not an error. A stream that memory has no room for, or that is longer
/// than `longestOutput`, is an error; it comes when the command has ended all the same.
[[nodiscard]] RunOutcome runBrewSync(const std::string& brewPath,
                                     const std::vector<std::string>& args,
                                     std::size_t longestOutput = FileDescriptor::longestContent);
