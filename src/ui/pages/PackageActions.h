// SPDX-License-Identifier: MIT
#pragma once

#include "BrewPackage.h"
#include "widgets/Row.h"

#include <QHash>

class BrewManager;

/// The installed package with this identifier, a formula rather than a cask.
[[nodiscard]] std::optional<BrewPackage> installedPackage(const BrewManager& manager,
                                                          const QString& packageID);

/// Which of these formulae are installed: the identifier of each, by its name and by its full one.
[[nodiscard]] QHash<QString, QString> installedFormulae(const BrewManager& manager,
                                                        const QStringList& names);

/// Opens the package's homepage; can't be triggered where it has none that may be opened.
[[nodiscard]] RowAction homepageAction(const std::optional<BrewPackage>& package);
