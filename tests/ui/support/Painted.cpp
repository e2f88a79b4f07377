// SPDX-License-Identifier: MIT
#include "Painted.h"

#include "style/Symbol.h"

#include <QFontMetrics>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr auto format = QImage::Format_RGB32;

QImage canvas(QSize size, const QColor& color) {
    QImage image(size, format);
    image.fill(color);
    return image;
}

bool areAlike(QRgb a, QRgb b) {
    // Blending rounds each part, and the surface may have been blended itself.
    constexpr int tolerance = 3;
    return std::abs(qRed(a) - qRed(b)) <= tolerance &&
           std::abs(qGreen(a) - qGreen(b)) <= tolerance &&
           std::abs(qBlue(a) - qBlue(b)) <= tolerance;
}

struct Pixel final {
    QPoint place;
    QRgb color;
};

/// The pixels of a drawing, those of the surface last: a surface without it is told by the first.
QList<Pixel> pixelsOf(const QImage& drawing, const QColor& below) {
    QList<Pixel> pixels;
    for (int y = 0; y < drawing.height(); ++y) {
        for (int x = 0; x < drawing.width(); ++x)
            pixels.append({{x, y}, drawing.pixel(x, y)});
    }
    // Not of std::ranges, whose ranges as results clang 14 can't read from GCC 12's library.
    std::stable_partition(pixels.begin(), pixels.end(), [&below](const Pixel& pixel) {
        return !areAlike(pixel.color, below.rgb());
    });
    return pixels;
}

/// How far a picture leads away from its surface, by the parts of the colours.
std::array<double, 3> inkOf(const QImage& picture, const QColor& below) {
    std::array<double, 3> ink{};
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            // What rounding does to a whole surface would add up.
            if (areAlike(pixel, below.rgb()))
                continue;
            ink[0] += qRed(pixel) - below.red();
            ink[1] += qGreen(pixel) - below.green();
            ink[2] += qBlue(pixel) - below.blue();
        }
    }
    return ink;
}

} // namespace

QImage Painted::pictureOf(const QWidget& widget) {
    const QRect place(widget.mapTo(widget.window(), QPoint(0, 0)), widget.size());
    return widget.window()->grab(place).toImage().convertToFormat(format);
}

QRect Painted::placeOf(const Symbol& symbol, const QImage& picture) {
    QImage drawing = canvas({symbol.side, symbol.side}, symbol.below);
    QPainter painter(&drawing);
    ::Symbol::paint(&painter, symbol.name, drawing.rect(), symbol.color);
    painter.end();
    const QList<Pixel> pixels = pixelsOf(drawing, symbol.below);
    for (int y = 0; y <= picture.height() - symbol.side; ++y) {
        for (int x = 0; x <= picture.width() - symbol.side; ++x) {
            const bool isHere = std::ranges::all_of(pixels, [&](const Pixel& pixel) {
                return areAlike(picture.pixel(QPoint(x, y) + pixel.place), pixel.color);
            });
            if (isHere)
                return {x, y, symbol.side, symbol.side};
        }
    }
    return {};
}

bool Painted::isAllOf(const QImage& picture, const Text& text) {
    constexpr double tolerance = 0.04;
    const QRect room = QFontMetrics(text.font).boundingRect({}, Qt::AlignLeft, text.text);
    QImage letters = canvas(room.size() * 2, text.below);
    QPainter painter(&letters);
    painter.setFont(text.font);
    painter.setPen(text.color);
    painter.drawText(letters.rect(), Qt::AlignCenter, text.text);
    painter.end();
    const auto wanted = inkOf(letters, text.below);
    const auto found = inkOf(picture, text.below);
    const double most =
        std::abs(*std::ranges::max_element(wanted, {}, [](double part) { return std::abs(part); }));
    for (std::size_t part = 0; part < wanted.size(); ++part) {
        if (std::abs(found.at(part) - wanted.at(part)) > tolerance * most)
            return false;
    }
    return most > 0;
}
