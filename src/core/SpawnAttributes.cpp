// SPDX-License-Identifier: MIT
#include "SpawnAttributes.h"

#include <unistd.h>

#include <csignal>

#ifdef __APPLE__
#include <crt_externs.h>
#include <fcntl.h>
#endif

#ifdef __GLIBC__
#if __GLIBC_PREREQ(2, 34)
#define LUMORA_HAS_ADDCLOSEFROM
#endif
#endif

namespace {

char** inheritedEnvironment() {
#ifdef __APPLE__
    return *_NSGetEnviron();
#else
    return environ;
#endif
}

} // namespace

SpawnAttributes::SpawnAttributes() : m_environment(inheritedEnvironment()) {
    note(posix_spawnattr_init(&m_attributes));
    note(posix_spawn_file_actions_init(&m_fileActions));

    sigset_t signals;
    sigemptyset(&signals);
    note(posix_spawnattr_setsigmask(&m_attributes, &signals));
    sigaddset(&signals, SIGPIPE);
    note(posix_spawnattr_setsigdefault(&m_attributes, &signals));
    short flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID;
#ifdef __APPLE__
    // Also keeps out what lacks close-on-exec only for a moment, there being no pipe2().
    flags |= POSIX_SPAWN_CLOEXEC_DEFAULT;
    // It is an error to hand on what isn't open.
    if (::fcntl(STDIN_FILENO, F_GETFD) >= 0)
        note(posix_spawn_file_actions_addinherit_np(&m_fileActions, STDIN_FILENO));
#endif
    note(posix_spawnattr_setflags(&m_attributes, flags));
}

SpawnAttributes::~SpawnAttributes() {
    posix_spawn_file_actions_destroy(&m_fileActions);
    posix_spawnattr_destroy(&m_attributes);
}

void SpawnAttributes::clearEnvironment() {
    static char* none[] = {nullptr};
    m_environment = none;
}

void SpawnAttributes::connect(int source, int target) {
    note(posix_spawn_file_actions_adddup2(&m_fileActions, source, target));
}

int SpawnAttributes::spawn(pid_t& pid, const std::vector<char*>& argumentVector) {
#ifdef LUMORA_HAS_ADDCLOSEFROM
    // A daemon that `brew services` starts would hold on to what leaks here for days. The
    // streams are connected by now: this comes last.
    note(posix_spawn_file_actions_addclosefrom_np(&m_fileActions, STDERR_FILENO + 1));
#endif
    // With a stream that isn't connected a child would print on ours.
    if (m_error != 0)
        return m_error;
    return posix_spawn(&pid, argumentVector.front(), &m_fileActions, &m_attributes,
                       argumentVector.data(), m_environment);
}

void SpawnAttributes::note(int error) {
    if (m_error == 0)
        m_error = error;
}
