// SPDX-License-Identifier: MIT
#pragma once

#include "PackageType.h"

/// One hit of a search in Homebrew's catalogue.
struct SearchResult final {
    QString name;
    PackageType type{PackageType::formula};
    bool isInstalled{};

    [[nodiscard]] QString id() const { return packageID(type, name); }
};
