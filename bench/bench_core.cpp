// SPDX-License-Identifier: MIT
//
// What running a command through runBrewSync, with its guard, costs beside the least that the
// same child can cost: one that ends at once, and one that takes half a second.
#include "RunBrewSync.h"

#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

namespace {

constexpr const char* trivial = "true";
constexpr const char* halfASecond = "sleep 0.5 #";

void plainSpawn(benchmark::State& state, const char* command) {
    char shell[] = "/bin/zsh";
    char login[] = "-l";
    char option[] = "-c";
    std::string line = commandLine(command, {"x"});
    char* const arguments[] = {shell, login, option, line.data(), nullptr};
    for (auto _ : state) {
        pid_t pid = -1;
        int status = -1;
        if (posix_spawn(&pid, shell, nullptr, nullptr, arguments, environ) != 0 ||
            waitpid(pid, &status, 0) != pid || status != 0)
            state.SkipWithError("the child could not be run");
    }
}

void guardedRun(benchmark::State& state, const char* command) {
    for (auto _ : state) {
        const RunOutcome outcome = runBrewSync(command, {"x"});
        const auto* const result = std::get_if<CommandResult>(&outcome);
        if (result == nullptr || result->status != 0)
            state.SkipWithError("the child could not be run");
    }
}

} // namespace

BENCHMARK_CAPTURE(plainSpawn, trivial, trivial)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(guardedRun, trivial, trivial)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(plainSpawn, halfASecond, halfASecond)
    ->UseRealTime()
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(guardedRun, halfASecond, halfASecond)
    ->UseRealTime()
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
