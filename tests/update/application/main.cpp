// SPDX-License-Identifier: MIT
#include "ApplicationBundle.h"
#include "LumoraApp.h"
#include "ShellProcess.h"

#include <cstdio>

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

namespace {

/// Its own, as the bundle tells it.
int printVersion(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    std::printf("Lumora %s\n", qPrintable(ApplicationBundle::running()->version()));
    return EXIT_SUCCESS;
}

} // namespace

/// Lumora, but for the place it gets its releases from, which the environment names, and for
/// its version, which a test may stamp into a copy of the bundle. What is shipped has both
/// built in and listens to nobody.
int main(int argc, char* argv[]) {
    if (argc == 2 && argv[1] == "--version"sv)
        return printVersion(argc, argv);
    prepareForChildProcesses();
    LumoraApp app(argc, argv,
                  {.api = qEnvironmentVariable("LUMORA_RELEASE_API"), .owner = u"someone"_s});
    app.run();
}
