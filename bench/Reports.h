// SPDX-License-Identifier: MIT
#pragma once

#include "BrewPackage.h"

#include <string>

/// As many formulae as Homebrew had when they were recorded.
inline constexpr int wholeCatalogue = 8'563;

/// A report of `count` installed formulae: out of the recorded one, evenly, where LUMORA_RECORDED
/// has it, else a synthetic one.
[[nodiscard]] std::string reportOf(int count);

/// What such a report tells of, in its order.
[[nodiscard]] QList<BrewPackage> packagesIn(const std::string& report);
