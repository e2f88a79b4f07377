// SPDX-License-Identifier: MIT
#pragma once

#include "BrewListResponse.h"
#include "JsonReport.h"
#include "OutdatedResponse.h"

/// The decoded report; a failure ends the test program's work on it with an empty one.
template <class Report>
[[nodiscard]] std::optional<Report> decoded(const QByteArray& json) {
    auto outcome = decodeReport<Report>(json.toStdString());
    if (auto* report = std::get_if<Report>(&outcome))
        return std::move(*report);
    return std::nullopt;
}

/// Why the report can't be decoded; null if it can.
template <class Report>
[[nodiscard]] QString decodingError(const QByteArray& json) {
    const auto outcome = decodeReport<Report>(json.toStdString());
    const auto* error = std::get_if<DecodingError>(&outcome);
    return error != nullptr ? error->description : QString();
}
