// SPDX-License-Identifier: MIT
#pragma once

#include "JsonField.h"

#include <QString>

/// One outdated cask as the report of outdated packages describes it.
struct OutdatedCaskJSON final {
    QString name;
    /// One text under the key that holds a list in a formula. A report with a list here
    /// doesn't decode: it is refused whole rather than guessed at.
    QString installedVersions;
    /// The version that is available.
    QString currentVersion;

    static constexpr auto fields() {
        return std::tuple{JsonField{"name", &OutdatedCaskJSON::name},
                          JsonField{"installed_versions", &OutdatedCaskJSON::installedVersions},
                          JsonField{"current_version", &OutdatedCaskJSON::currentVersion}};
    }

    bool operator==(const OutdatedCaskJSON&) const = default;
};
