// SPDX-License-Identifier: MIT
#pragma once

#include "BrewPackage.h"
#include "OutdatedPackage.h"

#include <QStringList>

/// What brew prints for the lists that a test wants the manager to have.
namespace Reports {

/// The report of the installed packages: formulae and casks each in their own array.
[[nodiscard]] QByteArray installed(const QList<BrewPackage>& packages);
[[nodiscard]] QByteArray outdated(const QList<OutdatedPackage>& packages);
/// One line for each text.
[[nodiscard]] QByteArray lines(const QStringList& lines);

} // namespace Reports
