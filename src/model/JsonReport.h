// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <string>
#include <variant>

/// Why a report could not be decoded: the place, what was expected there and what was found.
struct DecodingError final {
    QString description;

    bool operator==(const DecodingError&) const = default;
};

/// Decodes a whole report strictly: keys without a field are ignored, but one missing
/// required key, one value of the wrong kind or one slip of syntax anywhere refuses the
/// document. `Report` is BrewListResponse, BrewInfoResponse or OutdatedResponse.
///
/// Any thread; spare capacity behind the text saves a copy of it.
template <class Report>
[[nodiscard]] std::variant<Report, DecodingError> decodeReport(const std::string& utf8);

/// Encodes a report with the same keys: required ones always, absent optional ones never.
template <class Report>
[[nodiscard]] QByteArray encodeReport(const Report& report);
