// SPDX-License-Identifier: MIT
#pragma once

#include "JsonField.h"

#include <QString>

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
