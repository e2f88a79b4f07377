// SPDX-License-Identifier: MIT
#pragma once

#include "FormulaInstalled.h"
#include "FormulaVersions.h"

#include <QList>

/// One installed formula as the report of installed packages describes it.
struct FormulaJSON final {
    QString name;
    std::optional<QString> fullName;
    std::optional<QString> desc;
    std::optional<QString> homepage;
    std::optional<FormulaVersions> versions;
    /// The kegs, in the order in which brew lists them. (A cask's "installed" is a text.)
    std::optional<QList<FormulaInstalled>> installed;
    std::optional<bool> outdated;
    std::optional<QList<QString>> dependencies;

    static constexpr auto fields() {
        return std::tuple{JsonField{"name", &FormulaJSON::name},
                          JsonField{"full_name", &FormulaJSON::fullName},
                          JsonField{"desc", &FormulaJSON::desc},
                          JsonField{"homepage", &FormulaJSON::homepage},
                          JsonField{"versions", &FormulaJSON::versions},
                          JsonField{"installed", &FormulaJSON::installed},
                          JsonField{"outdated", &FormulaJSON::outdated},
                          JsonField{"dependencies", &FormulaJSON::dependencies}};
    }

    bool operator==(const FormulaJSON&) const = default;
};
