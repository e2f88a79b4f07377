// SPDX-License-Identifier: MIT
#pragma once

#include "CaskJSON.h"
#include "FormulaJSON.h"

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
