// SPDX-License-Identifier: MIT
//
// The application as main() starts it, with a watch on its first frame and, where the environment
// names them, a release service of its own and the certificate that vouches for it.
// Usage: [LUMORA_BENCH_RELEASES=ADDRESS] [LUMORA_TRUSTED_CERTIFICATE=FILE]
//        bench_launch BREW [--exit | --exit-loaded]
//
// --exit ends it at the first frame, --exit-loaded once all lists are there.
#include "BrewManager.h"
#include "FirstFrame.h"
#include "LumoraApp.h"
#include "ShellProcess.h"

namespace {

/// Ends the process once all of the lists that are being loaded are there.
void exitLoaded(BrewManager& manager) {
    for (Published<bool>* const flag : {&manager.isLoadingFormulae, &manager.isLoadingCasks,
                                        &manager.isLoadingOutdated, &manager.isLoadingTaps})
        flag->subscribe(&manager, [&manager](bool) {
            if (!*manager.isLoadingFormulae && !*manager.isLoadingCasks &&
                !*manager.isLoadingOutdated && !*manager.isLoadingTaps)
                std::_Exit(0);
        });
}

} // namespace

int main(int argc, char* argv[]) {
    const auto then = FirstFrame::takeLast(argc, argv);
    const bool endsLoaded = argc == 3 && std::string_view(argv[2]) == "--exit-loaded";
    if (argc != (endsLoaded ? 3 : 2))
        return EXIT_FAILURE;
    prepareForChildProcesses();
    char option[] = "--brew";
    char* words[] = {argv[0], option, argv[1], nullptr};
    int count = 3;
    // Nobody listens at the port that is none.
    const QString releases =
        qEnvironmentVariable("LUMORA_BENCH_RELEASES", QStringLiteral("http://127.0.0.1:0"));
    LumoraApp app(count, words,
                  {.api = releases,
                   .owner = QStringLiteral("bench"),
                   .program = QStringLiteral(LUMORA_FETCH)});
    const FirstFrame firstFrame(&app.window(), then);
    if (endsLoaded)
        exitLoaded(app.brewManager());
    app.run();
}
