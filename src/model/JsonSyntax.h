// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>
#include <string_view>

/// The first place at which a text stops being JSON.
///
/// The parser that reads the reports says what is wrong with one but not where; a user
/// whose shell profile prints a greeting into every report needs to see that line.
struct JsonSyntaxError final {
    /// Bytes from the start of the text.
    std::size_t offset{};
    /// What JSON has at that place, in words.
    std::string_view expected;

    /// The first error of a UTF-8 text, or nothing if it is JSON of at most 1024 levels.
    [[nodiscard]] static std::optional<JsonSyntaxError> find(std::string_view utf8);

    /// Line, column, what was expected and what `utf8` has there instead; one line.
    [[nodiscard]] QString description(std::string_view utf8) const;
};
