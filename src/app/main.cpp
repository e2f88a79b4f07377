// SPDX-License-Identifier: MIT
#include "Addresses.h"
#include "LumoraApp.h"
#include "ShellProcess.h"

int main(int argc, char* argv[]) {
    prepareForChildProcesses();
    LumoraApp app(argc, argv, {.api = Addresses::releaseApi, .owner = Addresses::releaseOwner});
    app.run();
}
