// SPDX-License-Identifier: MIT
#pragma once

#include "BrewDiscovery.h"
#include "FakeBrew.h"

/// Finds exactly this brew, and asks no shell when it isn't there.
[[nodiscard]] inline BrewDiscovery brewAt(const QString& path) {
    return {.candidates = {path.toStdString()}, .askShell = false};
}

[[nodiscard]] inline BrewDiscovery brewAt(const FakeBrew& brew) {
    return brewAt(brew.path());
}
