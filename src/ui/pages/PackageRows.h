// SPDX-License-Identifier: MIT
#pragma once

#include "BrewPackage.h"
#include "OutdatedPackage.h"
#include "SearchResult.h"
#include "widgets/Row.h"

// What the lists of packages show of a record: one value per kind of list, which turns into a row.

/// An installed formula.
struct FormulaRow final {
    BrewPackage package;
    std::function<void()> onUninstall;
    /// All that are installed: some of them may need it.
    QList<BrewPackage> installed{};

    [[nodiscard]] Row toRow() const;
};

/// An installed cask; it never came along with another package.
struct CaskRow final {
    BrewPackage package;
    std::function<void()> onUninstall;

    [[nodiscard]] Row toRow() const;
};

/// An outdated package.
struct UpdateRow final {
    OutdatedPackage package;
    /// This package is being upgraded.
    bool isUpgrading{};
    /// Some package is.
    bool isAnyUpgrading{};
    std::function<void()> onUpgrade;

    [[nodiscard]] Row toRow() const;
};

/// A hit of a search.
struct SearchResultRow final {
    SearchResult result;
    /// The name of the hit that is being installed.
    std::optional<QString> installProgress;
    std::function<void()> onInstall;

    [[nodiscard]] Row toRow() const;
};
