// SPDX-License-Identifier: MIT
//
// What running a trivial command through runBrewSync costs beside the least that the same
// child can cost.
#include "RunBrewSync.h"

#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

void plainSpawn(benchmark::State& state) {
    char shell[] = "/bin/zsh";
    char login[] = "-l";
    char command[] = "-c";
    char line[] = "true 'x'";
    char* const arguments[] = {shell, login, command, line, nullptr};
    for (auto _ : state) {
        pid_t pid = -1;
        int status = -1;
        if (posix_spawn(&pid, shell, nullptr, nullptr, arguments, environ) != 0 ||
            waitpid(pid, &status, 0) != pid || status != 0)
            state.SkipWithError("the child could not be run");
    }
}

void runBrewSyncOfTrivialChild(benchmark::State& state) {
    for (auto _ : state) {
        const RunOutcome outcome = runBrewSync("true", {"x"});
        const auto* const result = std::get_if<CommandResult>(&outcome);
        if (result == nullptr || result->status != 0)
            state.SkipWithError("the child could not be run");
    }
}

} // namespace

BENCHMARK(plainSpawn)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(runBrewSyncOfTrivialChild)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
