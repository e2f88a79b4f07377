// SPDX-License-Identifier: MIT
#include "Askpass.h"

#include <cstdlib>

int main(int argc, char* argv[]) {
    const int status = Askpass::run(argc > 1 ? argv[1] : "");
    // Nothing that is destroyed now would be wiped by it; the system takes it all back at once.
    std::_Exit(status);
}
