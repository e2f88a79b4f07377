// SPDX-License-Identifier: MIT
#pragma once

#include "JsonField.h"

#include <QList>
#include <QString>

/// One outdated formula as the report of outdated packages describes it.
struct OutdatedFormulaJSON final {
    QString name;
    QList<QString> installedVersions;
    /// The version that is available.
    QString currentVersion;
    std::optional<bool> pinned;

    static constexpr auto fields() {
        return std::tuple{JsonField{"name", &OutdatedFormulaJSON::name},
                          JsonField{"installed_versions", &OutdatedFormulaJSON::installedVersions},
                          JsonField{"current_version", &OutdatedFormulaJSON::currentVersion},
                          JsonField{"pinned", &OutdatedFormulaJSON::pinned}};
    }

    bool operator==(const OutdatedFormulaJSON&) const = default;
};
