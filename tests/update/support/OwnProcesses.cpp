// SPDX-License-Identifier: MIT
#include "OwnProcesses.h"

#ifdef __linux__

#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace {

/// Waits for one child, burying all others, as the first process of a namespace has to:
/// the dead would stay in sight otherwise.
[[noreturn]] void endWith(pid_t child) {
    int status = 0;
    for (;;) {
        const pid_t ended = ::wait(&status);
        if (ended == child || (ended < 0 && errno != EINTR))
            ::_exit(WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE);
    }
}

/// Returns in the child, which goes down with its parent.
void goOnAsChild() {
    const pid_t child = ::fork();
    if (child > 0)
        endWith(child);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
}

} // namespace

void OwnProcesses::enter() {
    if (::unshare(CLONE_NEWPID | CLONE_NEWNS) != 0)
        return;
    ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
    // The first is the namespace's first process, the second the test.
    goOnAsChild();
    ::mount("proc", "/proc", "proc", MS_NOSUID | MS_NODEV | MS_NOEXEC, nullptr);
    goOnAsChild();
}

#else

void OwnProcesses::enter() {}

#endif
