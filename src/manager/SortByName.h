// SPDX-License-Identifier: MIT
#pragma once

#include "BrewPackage.h"

/// Sorts by name with the current locale's collation, ignoring case.
///
/// Stable: names that compare equal keep their order. Homebrew's own order is nearly
/// right already, which makes this linear in practice and n log n at worst.
void sortByName(QList<BrewPackage>& packages);
