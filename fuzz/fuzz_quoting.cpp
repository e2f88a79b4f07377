// SPDX-License-Identifier: MIT
//
// Any bytes as the arguments of a command, through the real zsh. NULs part the arguments.
#include "Require.h"
#include "RunBrewSync.h"

#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

/// Where no profile of the user's or the system's is read.
void moveHome() {
    static const QTemporaryDir home;
    QFile environment(home.filePath(u".zshenv"_s));
    require(environment.open(QIODevice::WriteOnly) &&
                environment.write("unsetopt global_rcs\n") > 0,
            "there is a home");
    qputenv("HOME", home.path().toUtf8());
    qunsetenv("ZDOTDIR");
}

std::vector<std::string> argumentsIn(const std::string& bytes) {
    std::vector<std::string> arguments;
    for (std::size_t start = 0; start <= bytes.size();) {
        const std::size_t end = std::min(bytes.find('\0', start), bytes.size());
        arguments.push_back(bytes.substr(start, end - start));
        start = end + 1;
    }
    return arguments;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    moveHome();
    prepareForChildProcesses();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(data, data + size);
    // The path is the shell's to read, so that it can be a command of several words.
    const std::string line = commandLine(R"(/usr/bin/printf '%s\0')", argumentsIn(bytes));
    const auto started = ShellProcess::start({"-l", "-c", line});
    require(std::holds_alternative<ShellProcess>(started), "the shell starts");

    const auto& shell = std::get<ShellProcess>(started);
    std::string output;
    std::string error;
    require(shell.standardOutput().readToEnd(output) == 0, "the output can be read");
    require(shell.standardError().readToEnd(error) == 0, "so can what it complains of");
    require(shell.waitForExit() == 0 && error.empty(), "the shell has nothing to complain of");
    require(output == bytes + '\0', "every argument arrives as it is");
    return 0;
}
