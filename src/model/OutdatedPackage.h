// SPDX-License-Identifier: MIT
#pragma once

#include "PackageType.h"

/// One formula or cask for which a newer version is available.
struct OutdatedPackage final {
    /// Formula name or cask token.
    QString name;
    /// The installed version as the user is shown it.
    QString currentVersion;
    /// The version available.
    QString latestVersion;
    PackageType type{PackageType::formula};

    [[nodiscard]] QString id() const { return packageID(type, name); }
};
