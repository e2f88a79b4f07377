// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

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
