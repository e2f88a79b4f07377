// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <array>
#include <optional>

/// The languages that the interface speaks, in the order in which a picker lists them.
enum class Lang { ko, en, ja };

inline constexpr std::array allLangs{Lang::ko, Lang::en, Lang::ja};

/// The two-letter code, which is also the stored form of a choice.
[[nodiscard]] QString rawValue(Lang lang);

/// The language with exactly this code, if there is one.
[[nodiscard]] std::optional<Lang> langFromRawValue(QStringView code);

/// The language's own name in its own script.
[[nodiscard]] QString displayName(Lang lang);
