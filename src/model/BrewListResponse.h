// SPDX-License-Identifier: MIT
#pragma once

#include "CaskJSON.h"
#include "FormulaJSON.h"

/// The report of installed packages; both lists must be there even when only one is wanted.
struct BrewListResponse final {
    QList<FormulaJSON> formulae;
    QList<CaskJSON> casks;

    static constexpr auto fields() {
        return std::tuple{JsonField{"formulae", &BrewListResponse::formulae},
                          JsonField{"casks", &BrewListResponse::casks}};
    }

    bool operator==(const BrewListResponse&) const = default;
};
