// SPDX-License-Identifier: MIT
#include "ProcessSetup.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

void prepareForChildProcesses() {
    const int null = ::open("/dev/null", O_RDONLY);
    if (null > STDIN_FILENO) {
        ::dup2(null, STDIN_FILENO);
        ::close(null);
    }
    std::signal(SIGCHLD, SIG_DFL);
}
