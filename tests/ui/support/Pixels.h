// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

/// What a user sees of a colour.
namespace Pixels {

/// A colour that is partly transparent on one that is not.
[[nodiscard]] QColor on(const QColor& below, const QColor& color);
/// Whether both look the same; drawing rounds each of their parts.
[[nodiscard]] bool areAlike(const QColor& a, const QColor& b, int tolerance = 1);
/// The smallest rectangle with all pixels of the image that have this colour. Thin strokes, as of
/// texts, need tolerance: no pixel of them may be quite full.
[[nodiscard]] QRect boundsOf(const QImage& image, const QColor& color, int tolerance = 1);

} // namespace Pixels
