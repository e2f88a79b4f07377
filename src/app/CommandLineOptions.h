// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// What the user asked for on the command line.
struct CommandLineOptions final {
    enum class Appearance { System, Light, Dark };

    Appearance appearance{Appearance::System};
    /// This brew instead of one that is looked for.
    std::optional<QString> brewPath;

    /// Reads the command line, for which neither an application object nor a display is needed,
    /// only the application's name and version. Ends the process after --help and --version, and
    /// with a line on standard error and status 2 for arguments that nobody knows.
    [[nodiscard]] static CommandLineOptions parse(int argc, char* argv[]);
};
