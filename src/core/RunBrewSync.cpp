// SPDX-License-Identifier: MIT
#include "RunBrewSync.h"

#include <simdjson.h>

namespace {

void appendQuoted(std::string& line, const std::string& argument) {
    line += '\'';
    for (const char character : argument) {
        if (character == '\'')
            line += R"('\'')";
        else
            line += character;
    }
    line += '\'';
}

std::string textOrNothing(std::string bytes) {
    return simdjson::validate_utf8(bytes) ? std::move(bytes) : std::string();
}

} // namespace

std::string commandLine(const std::string& brewPath, const std::vector<std::string>& args) {
    std::string line = brewPath + ' ';
    for (const std::string& argument : args) {
        if (&argument != &args.front())
            line += ' ';
        appendQuoted(line, argument);
    }
    return line;
}

RunOutcome runBrewSync(const std::string& brewPath, const std::vector<std::string>& args) {
    auto started = ShellProcess::start({"-l", "-c", commandLine(brewPath, args)});
    if (auto* error = std::get_if<LaunchError>(&started))
        return std::move(*error);

    const auto& shell = std::get<ShellProcess>(started);
    std::string output = shell.standardOutput().readToEnd();
    std::string error = shell.standardError().readToEnd();
    const std::int32_t status = shell.waitForExit();
    return CommandResult{textOrNothing(std::move(output)), textOrNothing(std::move(error)), status};
}
