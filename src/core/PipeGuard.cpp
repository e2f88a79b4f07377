// SPDX-License-Identifier: MIT
#include "PipeGuard.h"

#include "SpawnAttributes.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <utility>

namespace {

/// The command's pipes are where output streams usually are, to be read at once: it may fill
/// either while it keeps the other open. What ends a login session must not end the reading
/// before the command has ended. The loop is for a system whose `cat` can't be started.
constexpr const char* script = R"(trap '' HUP INT TERM
read -r _
drain() { cat || while read -r _; do :; done; }
drain <&1 > /dev/null &
drain <&2 > /dev/null)";

} // namespace

PipeGuard::PipeGuard(const FileDescriptor& standardOutput, const FileDescriptor& standardError) {
    Pipe life;
    if (life.open() != 0)
        return;
    SpawnAttributes attributes;
    // A function that the user's shell exports could take the place of a command.
    attributes.clearEnvironment();
    attributes.connect(life.readEnd.get(), STDIN_FILENO);
    attributes.connect(standardOutput.get(), STDOUT_FILENO);
    attributes.connect(standardError.get(), STDERR_FILENO);
    std::string shell = "/bin/sh";
    std::string option = "-c";
    std::string commands = script;
    if (attributes.spawn(m_pid, {shell.data(), option.data(), commands.data(), nullptr}) == 0)
        m_life = std::move(life.writeEnd);
    else
        m_pid = -1;
}

PipeGuard::PipeGuard(PipeGuard&& other) noexcept
    : m_life(std::move(other.m_life)), m_pid(std::exchange(other.m_pid, -1)) {}

PipeGuard& PipeGuard::operator=(PipeGuard&& other) noexcept {
    std::swap(m_life, other.m_life);
    std::swap(m_pid, other.m_pid);
    return *this;
}

void PipeGuard::end() const {
    // Quicker than to let it find both pipes at their ends.
    if (m_pid >= 0)
        ::kill(m_pid, SIGKILL);
}

PipeGuard::~PipeGuard() {
    if (m_pid < 0)
        return;
    end();
    while (::waitpid(m_pid, nullptr, 0) < 0 && errno == EINTR) {
    }
}
