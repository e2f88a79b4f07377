// SPDX-License-Identifier: MIT
#pragma once

#include "JsonField.h"

#include <QList>
#include <QString>

/// One installed cask as the report of installed packages describes it.
struct CaskJSON final {
    QString token;
    std::optional<QString> fullToken;
    /// Display names. (A formula's "name" is one text.)
    std::optional<QList<QString>> name;
    std::optional<QString> desc;
    std::optional<QString> homepage;
    std::optional<QString> version;
    /// The installed version.
    std::optional<QString> installed;
    std::optional<bool> outdated;

    static constexpr auto fields() {
        return std::tuple{JsonField{"token", &CaskJSON::token},
                          JsonField{"full_token", &CaskJSON::fullToken},
                          JsonField{"name", &CaskJSON::name},
                          JsonField{"desc", &CaskJSON::desc},
                          JsonField{"homepage", &CaskJSON::homepage},
                          JsonField{"version", &CaskJSON::version},
                          JsonField{"installed", &CaskJSON::installed},
                          JsonField{"outdated", &CaskJSON::outdated}};
    }

    bool operator==(const CaskJSON&) const = default;
};
