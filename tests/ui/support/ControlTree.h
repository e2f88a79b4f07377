// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class QWidget;

/// What is wrong with the places of the widgets below a root, in words; nothing if all is well.
namespace ControlTree {

/// Controls that cover each other.
[[nodiscard]] QString overlaps(const QWidget& root);
/// Widgets that stick out of what they are in.
[[nodiscard]] QString sticksOut(const QWidget& root);
/// Labels and buttons without room for their texts, unless they cut them by design.
[[nodiscard]] QString clippedTexts(const QWidget& root);
/// Widgets that take the focus but have no name for a screen reader.
[[nodiscard]] QString withoutName(const QWidget& root);

/// Not what is wrong but all that a screen reader may say of `root` and what is below it: names,
/// descriptions and the like.
[[nodiscard]] QStringList spoken(QWidget& root);

} // namespace ControlTree
