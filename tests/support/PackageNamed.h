// SPDX-License-Identifier: MIT
#pragma once

#include "BrewPackage.h"

/// An installed package of which only the name matters.
[[nodiscard]] inline BrewPackage packageNamed(const QString& name) {
    BrewPackage package;
    package.name = name;
    return package;
}
