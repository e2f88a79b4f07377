// SPDX-License-Identifier: MIT
#pragma once

#include "PackageType.h"

#include <QList>

struct CaskJSON;
struct FormulaJSON;

/// One installed formula or cask.
///
/// Two packages are equal when every field is; after an upgrade a package has the same
/// id() as before but isn't equal to its old self.
struct BrewPackage final {
    /// Formula name or cask token.
    QString name;
    QString fullName;
    /// "" when unknown, as homepage, version and installedVersion are.
    QString desc;
    QString homepage;
    QString version;
    QString installedVersion;
    bool isOutdated{};
    /// In brew's order; empty for a cask.
    QList<QString> dependencies;
    PackageType type{PackageType::formula};
    /// False for what came only as a dependency of something else.
    bool installedOnRequest{true};

    [[nodiscard]] static BrewPackage fromFormula(FormulaJSON formula);
    [[nodiscard]] static BrewPackage fromCask(CaskJSON cask);

    [[nodiscard]] QString id() const { return packageID(type, name); }

    /// What doesn't come from Homebrew's own tap goes by its full name among dependencies.
    [[nodiscard]] bool isAmong(const QList<QString>& names) const {
        return names.contains(name) || names.contains(fullName);
    }

    bool operator==(const BrewPackage&) const = default;
};

[[nodiscard]] std::size_t qHash(const BrewPackage& package, std::size_t seed = 0);
