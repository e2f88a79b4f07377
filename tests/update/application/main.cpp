// SPDX-License-Identifier: MIT
#include "LumoraApp.h"
#include "ShellProcess.h"

using namespace Qt::StringLiterals;

/// Lumora, but for the place it gets its releases from: the environment names it. What is
/// shipped has that place built in and listens to nobody.
int main(int argc, char* argv[]) {
    prepareForChildProcesses();
    LumoraApp app(argc, argv,
                  {.api = qEnvironmentVariable("LUMORA_RELEASE_API"), .owner = u"someone"_s});
    app.run();
}
