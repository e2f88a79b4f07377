// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>

/// The type of the interface, derived from the system's interface font.
///
/// Sizes are in device-independent pixels, since the layout around the text is.
namespace Typography {

inline constexpr double body = 13;
inline constexpr double caption = 11.5;
inline constexpr double caption2 = 11;
inline constexpr double sectionTitle = 11;
inline constexpr double tag = 9;
inline constexpr double headerTitle = 15;
inline constexpr double pageTitle = 20;

[[nodiscard]] QFont font(double size, QFont::Weight weight = QFont::Normal);
/// With digits of equal width where the font has them and Qt, from 6.7 on, can ask for them:
/// counts and versions don't jitter.
[[nodiscard]] QFont digits(double size, QFont::Weight weight = QFont::Normal);
/// For command output.
[[nodiscard]] QFont monospace(double size);

/// The room that a line of text needs: whole pixels, none too few.
[[nodiscard]] int width(const QFont& font, const QString& text);

} // namespace Typography
