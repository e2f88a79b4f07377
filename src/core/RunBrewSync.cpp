// SPDX-License-Identifier: MIT
#include "RunBrewSync.h"

#include <simdjson.h>

#include <cerrno>
#include <new>

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

LaunchError readFailure(int error, std::size_t longestOutput) {
    constexpr std::size_t mebibyte = 1024 * 1024;
    if (error == EFBIG) {
        return {"The command printed more than " + std::to_string(longestOutput / mebibyte) +
                " MiB, which is more than Lumora keeps."};
    }
    return LaunchError::outOfMemory();
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

RunOutcome runBrewSync(const std::string& brewPath, const std::vector<std::string>& args,
                       std::size_t longestOutput) {
    try {
        auto started = ShellProcess::start({"-l", "-c", commandLine(brewPath, args)});
        if (auto* error = std::get_if<LaunchError>(&started))
            return std::move(*error);

        const auto& shell = std::get<ShellProcess>(started);
        std::string output;
        std::string error;
        const int outputFailure = shell.standardOutput().readToEnd(output, longestOutput);
        const int errorFailure = shell.standardError().readToEnd(error, longestOutput);
        shell.endGuard();
        const std::int32_t status = shell.waitForExit();
        if (const int failure = outputFailure != 0 ? outputFailure : errorFailure)
            return readFailure(failure, longestOutput);
        return CommandResult{textOrNothing(std::move(output)), textOrNothing(std::move(error)),
                             status};
    } catch (const std::bad_alloc&) {
        return LaunchError::outOfMemory();
    }
}
