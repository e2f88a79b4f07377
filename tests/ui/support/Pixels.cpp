// SPDX-License-Identifier: MIT
#include "Pixels.h"

QColor Pixels::on(const QColor& below, const QColor& color) {
    const float opacity = color.alphaF();
    const auto mixed = [opacity](float part, float partBelow) {
        return opacity * part + (1 - opacity) * partBelow;
    };
    return QColor::fromRgbF(mixed(color.redF(), below.redF()),
                            mixed(color.greenF(), below.greenF()),
                            mixed(color.blueF(), below.blueF()));
}

bool Pixels::areAlike(const QColor& a, const QColor& b, int tolerance) {
    return qAbs(a.red() - b.red()) <= tolerance && qAbs(a.green() - b.green()) <= tolerance &&
           qAbs(a.blue() - b.blue()) <= tolerance;
}

QRect Pixels::boundsOf(const QImage& image, const QColor& color, int tolerance) {
    QRect bounds;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (areAlike(image.pixelColor(x, y), color, tolerance))
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}
