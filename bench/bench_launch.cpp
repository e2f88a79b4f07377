// SPDX-License-Identifier: MIT
//
// The application as main() starts it, with a watch on its first frame and, where the environment
// names one, a release service of its own.
// Usage: [LUMORA_BENCH_RELEASES=ADDRESS] bench_launch BREW [--exit]
#include "FirstFrame.h"
#include "LumoraApp.h"
#include "ShellProcess.h"

int main(int argc, char* argv[]) {
    const auto then = FirstFrame::takeLast(argc, argv);
    if (argc != 2)
        return EXIT_FAILURE;
    prepareForChildProcesses();
    char option[] = "--brew";
    char* words[] = {argv[0], option, argv[1], nullptr};
    int count = 3;
    // Nobody listens at the port that is none.
    const QString releases =
        qEnvironmentVariable("LUMORA_BENCH_RELEASES", QStringLiteral("http://127.0.0.1:0"));
    LumoraApp app(count, words, {.api = releases, .owner = QStringLiteral("bench")});
    const FirstFrame firstFrame(&app.window(), then);
    app.run();
}
