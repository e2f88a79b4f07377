// SPDX-License-Identifier: MIT
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

/// Draws an SVG into a square PNG: render_icon SVG SIDE PNG.
int main(int argc, char* argv[]) {
    if (argc != 4) {
        std::fputs("Usage: render_icon SVG SIDE PNG\n", stderr);
        return EXIT_FAILURE;
    }
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    const int side = QByteArray(argv[2]).toInt();
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    if (!drawing.isValid() || picture.isNull()) {
        std::fputs("render_icon: there is nothing to draw\n", stderr);
        return EXIT_FAILURE;
    }
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawing.render(&painter);
    painter.end();
    return picture.save(QString::fromLocal8Bit(argv[3]), "PNG") ? EXIT_SUCCESS : EXIT_FAILURE;
}
