// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QIcon>
#include <QRectF>
#include <QString>

class QPainter;

/// The line drawings of the interface, named after their symbols, tinted when they are drawn.
namespace Symbol {

/// Draws the symbol as large as fits into `rect`, sharp at the painter's pixel ratio.
void paint(QPainter* painter, const QString& name, const QRectF& rect, const QColor& color);

/// An icon that takes its colour from the palette of the button it is on.
[[nodiscard]] QIcon icon(const QString& name);

/// An icon that looks as this SVG file does, whether or not the toolkit's plugin for such icons,
/// which some systems package apart, is there.
[[nodiscard]] QIcon drawing(const QString& path);

} // namespace Symbol
