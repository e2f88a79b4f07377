// SPDX-License-Identifier: MIT
#pragma once

#include "BrewPackage.h"
#include "widgets/Row.h"

class BrewManager;

/// The installed package with this identifier, a formula rather than a cask.
[[nodiscard]] std::optional<BrewPackage> installedPackage(const BrewManager& manager,
                                                          const QString& packageID);

/// Opens the package's homepage; can't be triggered where it has none that may be opened.
[[nodiscard]] RowAction homepageAction(const std::optional<BrewPackage>& package);
