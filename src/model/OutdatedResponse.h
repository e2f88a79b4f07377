// SPDX-License-Identifier: MIT
#pragma once

#include "OutdatedCaskJSON.h"
#include "OutdatedFormulaJSON.h"

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
