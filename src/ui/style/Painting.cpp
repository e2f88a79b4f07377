// SPDX-License-Identifier: MIT
#include "style/Painting.h"

#include "style/Metrics.h"
#include "style/Theme.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>
#include <QWidget>
#include <qdrawutil.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double ringWidth = 2;

void drawRing(QPainter* painter, const QRectF& rect, double radius, const QColor& color) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(color, ringWidth));
    painter->setBrush(Qt::NoBrush);
    const double inset = ringWidth / 2;
    painter->drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), radius - inset,
                             radius - inset);
}

/// Rings of growing size and falling strength: no blur of a pixmap for a few pixels of shade.
void drawRings(QPainter* painter, const QRectF& panel, double cornerRadius, double shadowRadius,
               const QColor& color) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    const int rings = static_cast<int>(std::ceil(shadowRadius));
    for (int ring = 0; ring < rings; ++ring) {
        const double distance = ring + 0.5;
        const double falloff = 1 - distance / (rings + 1);
        painter->setPen(QPen(
            withOpacity(color, static_cast<double>(color.alphaF()) * falloff * falloff * 0.5), 1));
        painter->drawRoundedRect(panel.adjusted(-distance, -distance, distance, distance),
                                 cornerRadius + distance, cornerRadius + distance);
    }
}

/// That of a panel that is little more than its corners; larger ones only have longer sides. Around
/// a large panel the rings take four milliseconds, which is a quarter of a frame.
QPixmap smallestShadow(double cornerRadius, double shadowRadius, const QColor& color,
                       double devicePixelRatio) {
    const QString key =
        u"shadow/%1/%2/%3/%4"_s.arg(QString::number(cornerRadius), QString::number(shadowRadius),
                                    color.name(QColor::HexArgb), QString::number(devicePixelRatio));
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;

    // Whole pixels at each of the usual ratios.
    constexpr double side = 4;
    const double size = 2 * (cornerRadius + shadowRadius) + side;
    pixmap = QPixmap((QSizeF(size, size) * devicePixelRatio).toSize());
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    const double panel = size - 2 * shadowRadius;
    drawRings(&painter, QRectF(shadowRadius, shadowRadius, panel, panel), cornerRadius,
              shadowRadius, color);
    painter.end();
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

} // namespace

void Painting::fillRounded(QPainter* painter, const QRectF& rect, double radius,
                           const QColor& fill) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(fill);
    painter->drawRoundedRect(rect, radius, radius);
}

void Painting::drawBordered(QPainter* painter, const QRectF& rect, double radius,
                            const QColor& fill, const QColor& border) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(border, 1));
    painter->setBrush(fill);
    painter->drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5, radius - 0.5);
}

void Painting::drawButton(QPainter* painter, const QRectF& rect, const Theme& theme,
                          Surface surface) {
    const double radius = surface.isProminent ? Metrics::rowRadius : Metrics::buttonRadius;
    if (surface.isProminent || surface.isDestructive)
        fillRounded(painter, rect, radius,
                    withOpacity(surface.isDestructive ? theme.destructive : theme.accent,
                                surface.isEnabled ? 1 : 0.4));
    else
        drawBordered(painter, rect, radius, theme.field, theme.fieldBorder);
    if (surface.isEnabled && (surface.isPressed || surface.isHovered))
        fillRounded(painter, rect, radius, surface.isPressed ? theme.pressed : theme.hover);
}

bool Painting::showsFocus(const QWidget* widget) {
    return widget->hasFocus() && widget->window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

void Painting::drawFocusRing(QPainter* painter, const QRectF& rect, double radius,
                             const Theme& theme) {
    drawRing(painter, rect, radius, theme.accent);
}

void Painting::drawFocusRingWithin(QPainter* painter, const QRectF& rect, double radius,
                                   const QColor& color) {
    drawRing(painter, rect.adjusted(ringWidth, ringWidth, -ringWidth, -ringWidth),
             radius - ringWidth, color);
}

void Painting::drawHairline(QPainter* painter, const QRectF& rect, const Theme& theme) {
    painter->fillRect(QRectF(rect.left(), rect.bottom() - 1, rect.width(), 1), theme.hairline);
}

void Painting::drawShadow(QPainter* painter, const QRectF& panel, double cornerRadius,
                          double shadowRadius, const QColor& color) {
    const auto around = [](double width) {
        const int margin = qRound(width);
        return QMargins(margin, margin, margin, margin);
    };
    const double ratio = painter->device()->devicePixelRatio();
    const double edge = cornerRadius + shadowRadius;
    const QPixmap shadow = smallestShadow(cornerRadius, shadowRadius, color, ratio);
    const QRectF outer = panel.adjusted(-shadowRadius, -shadowRadius, shadowRadius, shadowRadius);
    qDrawBorderPixmap(painter, outer.toRect(), around(edge), shadow, shadow.rect(),
                      around(edge * ratio));
}
