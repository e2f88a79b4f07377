// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QRect>
#include <QString>

class QWidget;

/// What is painted, held against what is meant to be.
namespace Painted {

/// A symbol on a surface of one colour.
struct Symbol final {
    QString name;
    int side{};
    QColor color;
    QColor below;
};

/// A text on a surface of one colour.
struct Text final {
    QString text;
    QFont font;
    QColor color;
    QColor below;
};

/// What a user sees where the widget is, with all that lies below and above it.
[[nodiscard]] QImage pictureOf(const QWidget& widget);

/// Where the symbol is drawn, in its size and colour and with nothing else in its square; invalid
/// if it is nowhere.
[[nodiscard]] QRect placeOf(const Symbol& symbol, const QImage& picture);

/// Whether the picture shows this text and nothing else: it takes the ink that the same letters
/// take elsewhere, whatever their font and wherever they stand.
[[nodiscard]] bool isAllOf(const QImage& picture, const Text& text);

} // namespace Painted
