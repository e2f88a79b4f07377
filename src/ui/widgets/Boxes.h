// SPDX-License-Identifier: MIT
#pragma once

#include <QBoxLayout>

class QScrollArea;

/// What pages and panels are put together of: rows, columns, and what stands between them.
namespace Boxes {

/// A widget or a layout in a box; without either, room to stretch.
struct Item final {
    Item() = default;

    Item(QWidget* itsWidget, int itsStretch = 0, Qt::Alignment itsAlignment = {})
        : widget(itsWidget), stretch(itsStretch), alignment(itsAlignment) {}

    Item(QLayout* itsLayout, int itsStretch = 0) : layout(itsLayout), stretch(itsStretch) {}

    QWidget* widget{};
    QLayout* layout{};
    int stretch{};
    Qt::Alignment alignment{};
};

[[nodiscard]] Item centered(QWidget* widget);
[[nodiscard]] Item stretch();

/// The items from left to right.
[[nodiscard]] QHBoxLayout* row(int spacing, std::initializer_list<Item> items,
                               QMargins margins = {});
/// The items from top to bottom.
[[nodiscard]] QVBoxLayout* column(int spacing, std::initializer_list<Item> items,
                                  QMargins margins = {});

/// A horizontal hairline between two parts of a page.
[[nodiscard]] QWidget* hairline();

/// An area in which the content scrolls up and down, without a frame around it.
[[nodiscard]] QScrollArea* scrolling(QWidget* content);

} // namespace Boxes
