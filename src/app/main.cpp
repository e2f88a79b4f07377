// SPDX-License-Identifier: MIT
#include "LumoraApp.h"
#include "ProcessSetup.h"

int main(int argc, char* argv[]) {
    prepareForChildProcesses();
    LumoraApp app(argc, argv);
    return app.run();
}
