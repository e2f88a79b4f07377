// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// Why a child process could not be started, in words for the user (UTF-8).
struct LaunchError final {
    std::string description;

    bool operator==(const LaunchError&) const = default;
};
