// SPDX-License-Identifier: MIT
#pragma once

#include "BrewPackage.h"

/// Sorts by name as the user's locale collates, ignoring case; names that compare equal keep
/// their order.
void sortByName(QList<BrewPackage>& packages);
