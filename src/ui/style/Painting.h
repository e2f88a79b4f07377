// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QRectF>

class QPainter;
class QWidget;
struct Theme;

/// The few shapes that the style, the list rows and the panels all draw.
namespace Painting {

/// How a button-like surface is to look right now.
struct Surface final {
    bool isEnabled{true};
    bool isHovered{};
    bool isPressed{};
    /// Filled with the accent, or with red.
    bool isProminent{};
    bool isDestructive{};
};

void fillRounded(QPainter* painter, const QRectF& rect, double radius, const QColor& fill);
/// A filled surface with a border that is one pixel wide and lies inside `rect`.
void drawBordered(QPainter* painter, const QRectF& rect, double radius, const QColor& fill,
                  const QColor& border);
void drawButton(QPainter* painter, const QRectF& rect, const Theme& theme, Surface surface);
/// Whether a widget has the focus and its user got there by keyboard: a mark where the mouse
/// has just clicked would say nothing.
[[nodiscard]] bool showsFocus(const QWidget* widget);
/// The mark of the keyboard focus around `rect`.
void drawFocusRing(QPainter* painter, const QRectF& rect, double radius, const Theme& theme);
/// The same within a surface that is filled, in the colour of its text.
void drawFocusRingWithin(QPainter* painter, const QRectF& rect, double radius, const QColor& color);
/// One device-independent pixel of hairline along the bottom of `rect`.
void drawHairline(QPainter* painter, const QRectF& rect, const Theme& theme);
/// A soft shadow of the given radius around a rounded panel.
void drawShadow(QPainter* painter, const QRectF& panel, double cornerRadius, double shadowRadius,
                const QColor& color);

} // namespace Painting
