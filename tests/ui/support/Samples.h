// SPDX-License-Identifier: MIT
#pragma once

#include "BrewPackage.h"
#include "OutdatedPackage.h"

/// Packages for the lists of a test.
namespace Samples {

[[nodiscard]] BrewPackage formula(const QString& name, const QString& desc = {});
[[nodiscard]] BrewPackage cask(const QString& name, const QString& desc = {});
/// A formula that came with another one.
[[nodiscard]] BrewPackage dependency(const QString& name);
/// The same package with a newer version available.
[[nodiscard]] BrewPackage outdated(BrewPackage package);

[[nodiscard]] OutdatedPackage outdatedFormula(const QString& name);
[[nodiscard]] OutdatedPackage outdatedCask(const QString& name);

/// As many formulae as asked for, each with a name, a version and a description of its own.
[[nodiscard]] QList<BrewPackage> manyFormulae(int count);

} // namespace Samples
