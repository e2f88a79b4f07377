// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

class QCoreApplication;

/// What the user asked for on the command line.
struct CommandLineOptions final {
    enum class Appearance { System, Light, Dark };

    Appearance appearance{Appearance::System};
    /// This brew instead of one that is looked for.
    std::optional<QString> brewPath;

    /// Answers --help and --version, and ends the process. Needs neither an application object
    /// nor a display; the application's name and version have to be set.
    static void answerQuestions(int argc, char* argv[]);

    /// Reads the application's arguments. Ends the process after --help and --version, and
    /// with a line on standard error and status 2 for arguments that it doesn't know.
    [[nodiscard]] static CommandLineOptions parse(const QCoreApplication& application);
};
