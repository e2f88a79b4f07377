// SPDX-License-Identifier: MIT
#include "ShellProcess.h"

#include "SpawnAttributes.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <system_error>

namespace {

LaunchError launchError(const char* shell, int error) {
    std::string text = std::string(shell) +
                       " could not be started: " + std::generic_category().message(error) + '.';
    if (error == ENOENT || error == EACCES) {
        text += " Lumora runs every brew command through this shell. "
                "Please install zsh and try again.";
    }
    return {std::move(text)};
}

std::vector<char*> argumentVector(std::string& program, std::vector<std::string>& arguments) {
    std::vector<char*> vector{program.data()};
    std::ranges::transform(arguments, std::back_inserter(vector),
                           [](std::string& argument) { return argument.data(); });
    vector.push_back(nullptr);
    return vector;
}

} // namespace

LaunchError LaunchError::outOfMemory() {
    return {"There is not enough memory for this command and what it prints."};
}

std::variant<ShellProcess, LaunchError>
ShellProcess::start(const std::vector<std::string>& arguments, const char* shell) {
    const auto hasNul = [](const std::string& text) {
        return text.find('\0') != std::string::npos;
    };
    // The system would silently cut the command off there, in the middle of a quoted name.
    if (std::ranges::any_of(arguments, hasNul))
        return LaunchError{
            "The command contains a NUL character, which no command line can carry."};

    Pipe output;
    Pipe error;
    if (const int code = output.open())
        return launchError(shell, code);
    if (const int code = error.open())
        return launchError(shell, code);
    // Standard error is read only after standard output has ended: the larger its
    // pipe, the later a chatty command has to stop and wait.
    error.enlarge();

    PipeGuard guard(output.readEnd, error.readEnd);
    SpawnAttributes attributes;
    attributes.connect(output.writeEnd.get(), STDOUT_FILENO);
    attributes.connect(error.writeEnd.get(), STDERR_FILENO);

    std::string program(shell);
    std::vector<std::string> owned(arguments);
    pid_t pid = -1;
    if (const int code = attributes.spawn(pid, argumentVector(program, owned)))
        return launchError(shell, code);
    return ShellProcess(pid, std::move(output.readEnd), std::move(error.readEnd), std::move(guard));
}

ShellProcess::ShellProcess(pid_t pid, FileDescriptor standardOutput, FileDescriptor standardError,
                           PipeGuard guard)
    : m_pid(pid),
      m_standardOutput(std::move(standardOutput)),
      m_standardError(std::move(standardError)),
      m_guard(std::move(guard)) {}

std::int32_t ShellProcess::waitForExit() const {
    int status = 0;
    while (::waitpid(m_pid, &status, 0) < 0) {
        if (errno != EINTR)
            return -1;
    }
    constexpr std::int32_t endedBySignal = 128;
    return WIFSIGNALED(status) ? endedBySignal + WTERMSIG(status) : WEXITSTATUS(status);
}

void prepareForChildProcesses() {
    const int null = ::open("/dev/null", O_RDONLY);
    if (null > STDIN_FILENO) {
        ::dup2(null, STDIN_FILENO);
        ::close(null);
    }
    std::signal(SIGCHLD, SIG_DFL);
}
