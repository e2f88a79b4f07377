// SPDX-License-Identifier: MIT
// Preloaded into the application: whoever reads the pipe that LUMORA_SOAK_HEAP names is told how
// many bytes of the heap are in use. From outside only what glibc has of the system can be seen,
// and a leak fills the gaps in that first.

#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>

namespace {

[[noreturn]] void tellReaders(const std::string& pipe) {
    // A reader that has gone already is no reason to end.
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_BLOCK, &all, nullptr);
    while (true) {
        const int reader = ::open(pipe.c_str(), O_WRONLY | O_CLOEXEC);
        if (reader < 0)
            std::abort();
        const struct mallinfo2 heap = ::mallinfo2();
        ::dprintf(reader, "%zu\n", heap.uordblks + heap.hblkhd);
        ::close(reader);
    }
}

/// Before main(), and in no other program that the variable comes to.
[[gnu::constructor]] void start() {
    const char* const pipe = std::getenv("LUMORA_SOAK_HEAP");
    if (pipe == nullptr || std::strcmp(::program_invocation_short_name, "Lumora") != 0)
        return;
    std::thread(tellReaders, std::string(pipe)).detach();
    ::unsetenv("LUMORA_SOAK_HEAP");
    ::unsetenv("LD_PRELOAD");
}

} // namespace
