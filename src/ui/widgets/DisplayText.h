// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

/// Text from outside (names, descriptions, command output) made harmless to show.
///
/// Control characters and the marks that reorder what follows them are replaced by visible
/// stand-ins; everything else stays as it is. A text without any is returned unchanged.
namespace DisplayText {

/// For one line: line breaks and tabs become blanks, and what no window could show is cut off.
[[nodiscard]] QString line(const QString& text);
/// For several lines: keeps line breaks and tabs, and breaks lines that no layout could
/// handle in reasonable time. Of what nobody could read, thousands of lines, the middle is left
/// out.
[[nodiscard]] QString block(const QString& text);
/// The same for what was meant for a terminal: as it would stand there, without colour codes.
[[nodiscard]] QString transcript(const QString& text);
/// For a label or an alert that wraps its text: what would not fit on a screen is cut off, and
/// words that are longer than a line may be wrapped, too, by zero width spaces in them.
[[nodiscard]] QString paragraph(const QString& text);
/// For menus, buttons and labels, where an ampersand would mark a shortcut.
[[nodiscard]] QString label(const QString& text);

/// For tool tips, which take for markup what looks like it. Nothing for an empty text.
[[nodiscard]] QString toolTip(const QString& text);
/// Gives the widget such a tool tip, and the text as the description for a screen reader: without
/// one the toolkit has it read the tool tip, markup and all.
void setToolTip(QWidget* widget, const QString& text);

} // namespace DisplayText
