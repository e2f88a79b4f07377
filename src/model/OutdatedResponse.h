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

/// The report of outdated packages; both lists must be there.
struct OutdatedResponse final {
    QList<OutdatedFormulaJSON> formulae;
    QList<OutdatedCaskJSON> casks;

    static constexpr auto fields() {
        return std::tuple{JsonField{"formulae", &OutdatedResponse::formulae},
                          JsonField{"casks", &OutdatedResponse::casks}};
    }

    bool operator==(const OutdatedResponse&) const = default;
};
