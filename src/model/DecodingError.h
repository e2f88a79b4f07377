// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Why a report could not be decoded: the place, what was expected there and what was found.
struct DecodingError final {
    QString description;

    bool operator==(const DecodingError&) const = default;
};
