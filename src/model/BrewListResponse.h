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

/// The report on named packages: the same two lists, either of which may be missing.
struct BrewInfoResponse final {
    std::optional<QList<FormulaJSON>> formulae;
    std::optional<QList<CaskJSON>> casks;

    static constexpr auto fields() {
        return std::tuple{JsonField{"formulae", &BrewInfoResponse::formulae},
                          JsonField{"casks", &BrewInfoResponse::casks}};
    }

    bool operator==(const BrewInfoResponse&) const = default;
};
