// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// Where to look for the `brew` executable.
struct BrewDiscovery final {
    /// Paths tried in this order; the first that exists is taken, whatever it is.
    std::vector<std::string> candidates;
    /// Whether to ask the user's own shell when no candidate exists.
    bool askShell{true};

    /// Homebrew's usual places. `home` is put in front of "/.homebrew/bin/brew" as it stands.
    [[nodiscard]] static BrewDiscovery usual(const std::string& home);

    /// The path of `brew`, or "" when there is none. Blocks while the shell is asked.
    [[nodiscard]] std::string run() const;
};

/// The user's home folder: HOME, or the user database's entry without it.
[[nodiscard]] std::string homeDirectory();
