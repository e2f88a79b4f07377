// SPDX-License-Identifier: MIT
#include "Fetch.h"
#include "FetchRequest.h"

#include <cstdlib>

int main(int argc, char* argv[]) {
    // A thread that can't be joined may be asking for the address of a host.
    std::_Exit(static_cast<int>(Fetch::run(argc, argv)));
}
