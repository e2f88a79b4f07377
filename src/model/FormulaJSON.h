// SPDX-License-Identifier: MIT
#pragma once

#include "JsonField.h"

#include <QList>
#include <QString>

/// The versions that Homebrew offers of a formula.
struct FormulaVersions final {
    std::optional<QString> stable;
    std::optional<QString> head;

    static constexpr auto fields() {
        return std::tuple{JsonField{"stable", &FormulaVersions::stable},
                          JsonField{"head", &FormulaVersions::head}};
    }

    bool operator==(const FormulaVersions&) const = default;
};

/// One installed keg of a formula.
struct FormulaInstalled final {
    QString version;
    std::optional<bool> installedOnRequest;
    std::optional<bool> installedAsDependency;

    static constexpr auto fields() {
        return std::tuple{
            JsonField{"version", &FormulaInstalled::version},
            JsonField{"installed_on_request", &FormulaInstalled::installedOnRequest},
            JsonField{"installed_as_dependency", &FormulaInstalled::installedAsDependency}};
    }

    bool operator==(const FormulaInstalled&) const = default;
};

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
