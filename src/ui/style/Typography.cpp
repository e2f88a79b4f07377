// SPDX-License-Identifier: MIT
#include "style/Typography.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QScreen>
#include <QtMath>

namespace {

QFont sized(QFont font, double size) {
    // Only the point size can be a fraction; it is relative to the screen's logical density.
    constexpr double pointsPerInch = 72;
    const QScreen* const screen = QGuiApplication::primaryScreen();
    const double density = screen != nullptr ? screen->logicalDotsPerInchY() : 96;
    font.setPointSizeF(size * pointsPerInch / density);
    return font;
}

} // namespace

QFont Typography::font(double size, QFont::Weight weight) {
    QFont font = sized(QFontDatabase::systemFont(QFontDatabase::GeneralFont), size);
    font.setWeight(weight);
    return font;
}

QFont Typography::digits(double size, QFont::Weight weight) {
    QFont result = font(size, weight);
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
    result.setFeature("tnum", 1);
#endif
    return result;
}

QFont Typography::monospace(double size) {
    return sized(QFontDatabase::systemFont(QFontDatabase::FixedFont), size);
}

int Typography::width(const QFont& font, const QString& text) {
    return qCeil(QFontMetricsF(font).horizontalAdvance(text));
}
