// SPDX-License-Identifier: MIT
#include "Require.h"

#include <cstdio>
#include <cstdlib>

void require(bool isTrue, const char* what) {
    if (isTrue)
        return;
    static_cast<void>(std::fprintf(stderr, "This must be true, and is not: %s.\n", what));
    std::abort();
}

QString textOf(const std::uint8_t* data, std::size_t size) {
    // The pointer is null where there is no byte, which would make a null text.
    return QString::fromUtf8(size == 0 ? "" : reinterpret_cast<const char*>(data),
                             static_cast<qsizetype>(size));
}
