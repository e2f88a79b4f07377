// SPDX-License-Identifier: MIT
#include "BrewDiscovery.h"

#include "ShellProcess.h"

#include <simdjson.h>

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <string_view>

namespace {

/// A path that is no UTF-8 couldn't be handed on as text: as good as none.
bool exists(const std::string& path) {
    std::error_code ignored;
    return simdjson::validate_utf8(path) && std::filesystem::exists(path, ignored);
}

/// White space and line ends as Unicode knows them, in UTF-8.
constexpr std::array<std::string_view, 25> whiteSpace{
    "\t",           "\n",           "\v",           "\f",           "\r",           " ",
    "\xC2\x85",     "\xC2\xA0",     "\xE1\x9A\x80", "\xE2\x80\x80", "\xE2\x80\x81", "\xE2\x80\x82",
    "\xE2\x80\x83", "\xE2\x80\x84", "\xE2\x80\x85", "\xE2\x80\x86", "\xE2\x80\x87", "\xE2\x80\x88",
    "\xE2\x80\x89", "\xE2\x80\x8A", "\xE2\x80\xA8", "\xE2\x80\xA9", "\xE2\x80\xAF", "\xE2\x81\x9F",
    "\xE3\x80\x80"};

std::string_view trimmed(std::string_view text) {
    const auto startsText = [&text](std::string_view space) { return text.starts_with(space); };
    const auto endsText = [&text](std::string_view space) { return text.ends_with(space); };
    const auto* space = whiteSpace.begin();
    while ((space = std::ranges::find_if(whiteSpace, startsText)) != whiteSpace.end())
        text.remove_prefix(space->size());
    while ((space = std::ranges::find_if(whiteSpace, endsText)) != whiteSpace.end())
        text.remove_suffix(space->size());
    return text;
}

/// Only a login shell that is also interactive reads every file in which users put
/// `brew` on their search path.
std::string askShellForBrew() {
    const auto started = ShellProcess::start({"-l", "-i", "-c", "which brew"});
    const auto* shell = std::get_if<ShellProcess>(&started);
    if (shell == nullptr)
        return {};
    std::string output;
    static_cast<void>(shell->standardOutput().readToEnd(output));
    static_cast<void>(shell->waitForExit());
    return std::string(trimmed(output));
}

} // namespace

BrewDiscovery BrewDiscovery::usual(const std::string& home) {
    return {.candidates = {"/opt/homebrew/bin/brew", "/usr/local/bin/brew",
                           home + "/.homebrew/bin/brew", "/home/linuxbrew/.linuxbrew/bin/brew"}};
}

std::string BrewDiscovery::run() const {
    const auto found = std::ranges::find_if(candidates, exists);
    if (found != candidates.end())
        return *found;
    if (!askShell)
        return {};
    std::string answer = askShellForBrew();
    return exists(answer) ? answer : std::string();
}

std::string homeDirectory() {
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0')
        return home;
    const passwd* entry = ::getpwuid(::getuid());
    return entry != nullptr && entry->pw_dir != nullptr ? entry->pw_dir : "";
}
