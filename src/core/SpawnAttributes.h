// SPDX-License-Identifier: MIT
#pragma once

#include <spawn.h>

#include <vector>

/// How a child process starts: a small owner around posix_spawn's attribute objects.
///
/// Every child gets an empty signal mask, the default action for SIGPIPE and no descriptor
/// but the three standard streams, whatever a library has set up in this process; all of
/// that would otherwise be inherited. It leads a session of its own, without a terminal: what
/// is typed where this process was started, or the end of that terminal, doesn't reach it, and
/// a shell that thinks it is interactive has nothing to fight for.
class SpawnAttributes final {
public:
    SpawnAttributes();
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    ~SpawnAttributes();

    /// The child gets no environment instead of this process's.
    void clearEnvironment();
    /// The child's standard stream `target` becomes a copy of this process's `source`.
    void connect(int source, int target);

    /// Starts `argumentVector[0]`; the vector ends in a null pointer. Returns 0 or errno, also
    /// that of what couldn't be set up: nothing is started then.
    [[nodiscard]] int spawn(pid_t& pid, const std::vector<char*>& argumentVector);

private:
    void note(int error);

    posix_spawnattr_t m_attributes{};
    posix_spawn_file_actions_t m_fileActions{};
    char** m_environment;
    int m_error{};
};
