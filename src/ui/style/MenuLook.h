// SPDX-License-Identifier: MIT
#pragma once

#include <QRegion>
#include <QSize>

class QPainter;
class QStyleOption;
class QStyleOptionMenuItem;

/// How menus look: rounded cards of entries that begin where the text does.
namespace MenuLook {

/// Between a menu's edge and its entries.
inline constexpr int margin = 5;

void paintPanel(QPainter* painter, const QStyleOption& option);
/// `mnemonic` says whether the letter of an entry's key is underlined.
void paintEntry(QPainter* painter, const QStyleOptionMenuItem& option, Qt::TextFlag mnemonic);
/// The size of an entry whose text without its key has this one.
[[nodiscard]] QSize entrySize(const QStyleOptionMenuItem& option, const QSize& text);
/// What is left of a menu's window without its corners.
[[nodiscard]] QRegion rounded(const QRect& rect);

} // namespace MenuLook
