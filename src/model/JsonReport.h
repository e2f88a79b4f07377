// SPDX-License-Identifier: MIT
#pragma once

#include "DecodingError.h"

#include <QByteArray>

#include <string>
#include <variant>

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
