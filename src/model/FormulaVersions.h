// SPDX-License-Identifier: MIT
#pragma once

#include "JsonField.h"

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
