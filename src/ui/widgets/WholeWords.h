// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QFont;

/// A text for a label that wraps it, and the room that its longest word needs.
struct WholeWords final {
    QString text{};
    int width{};
};

/// Makes a wrapped text end its lines between words alone, where the toolkit would after a hyphen
/// or a slash, too: names are full of them. Only a word that is wider than `widest` is broken, and
/// wherever its line is full.
[[nodiscard]] WholeWords wholeWords(const QString& text, const QFont& font, int widest);
