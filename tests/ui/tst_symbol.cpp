// SPDX-License-Identifier: MIT
#include "UiTest.h"
#include "shell/SidebarCategory.h"
#include "style/Look.h"
#include "style/Symbol.h"

#include <QApplication>
#include <QPainter>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace {

const QColor tint(0x0B, 0x62, 0xD6);

QImage canvas(QSize size, double ratio) {
    QImage image((QSizeF(size) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    return image;
}

/// The drawing at physical size, in one colour: as sharp as it can be.
QImage reference(const QString& name, int pixels, const QColor& color) {
    QImage image = canvas({pixels, pixels}, 1);
    QPainter painter(&image);
    QSvgRenderer(u":/icons/%1.svg"_s.arg(name)).render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}

QImage withoutRatio(QImage image) {
    image.setDevicePixelRatio(1);
    return image;
}

bool hasInk(const QImage& image) {
    const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < plain.height(); ++y) {
        for (int x = 0; x < plain.width(); ++x) {
            if (qAlpha(plain.pixel(x, y)) == 255)
                return true;
        }
    }
    return false;
}

} // namespace

class SymbolTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isThereForEveryName_data();
    void isThereForEveryName();
    void isSharpAtEveryPixelRatio_data();
    void isSharpAtEveryPixelRatio();
    void liesOnTheGridOfPixels();
    void makesIconsWithAPixelForEveryPixel_data();
    void makesIconsWithAPixelForEveryPixel();
    void takesAnIconsColourFromThePalette();
    void paleWhenDisabled();
};

void SymbolTest::isThereForEveryName_data() {
    QTest::addColumn<QString>("name");
    QStringList names{
        u"arrow.clockwise"_s,
        u"arrow.right"_s,
        u"arrow.up.right"_s,
        u"checkmark.circle"_s,
        u"doc.text"_s,
        u"envelope"_s,
        u"doc.text.magnifyingglass"_s,
        u"eye"_s,
        u"globe"_s,
        u"house"_s,
        u"line.3.horizontal"_s,
        u"paintbrush"_s,
        u"paintbrush.fill"_s,
        u"plus"_s,
        u"shippingbox.fill"_s,
        u"stethoscope"_s,
        u"trash"_s,
        u"xmark"_s,
        u"exclamationmark.triangle"_s,
    };
    for (const SidebarCategory category : allSidebarCategories)
        names.append(icon(category));
    for (const QString& name : names)
        QTest::newRow(qUtf8Printable(name)) << name;
}

void SymbolTest::isThereForEveryName() {
    QFETCH(QString, name);
    QSvgRenderer renderer(u":/icons/%1.svg"_s.arg(name));
    QVERIFY(renderer.isValid());
    QCOMPARE(renderer.viewBoxF(), QRectF(0, 0, 24, 24));
    QVERIFY(hasInk(reference(name, 48, tint)));
}

void SymbolTest::isSharpAtEveryPixelRatio_data() {
    QTest::addColumn<double>("ratio");
    QTest::addColumn<int>("side");
    for (const double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        for (const int side : {14, 16, 18, 20, 48})
            QTest::addRow("%d at %.2f", side, ratio) << ratio << side;
    }
}

void SymbolTest::isSharpAtEveryPixelRatio() {
    QFETCH(double, ratio);
    QFETCH(int, side);
    QImage image = canvas({side, side}, ratio);
    QPainter painter(&image);
    Symbol::paint(&painter, u"shippingbox"_s, QRectF(0, 0, side, side), tint);
    painter.end();
    // Drawn in physical pixels: not a single one differs from a drawing made at that size.
    const QImage expected = reference(u"shippingbox"_s, qRound(side * ratio), tint);
    QCOMPARE(withoutRatio(image).copy(expected.rect()), expected);
}

void SymbolTest::liesOnTheGridOfPixels() {
    // The middle of a row of odd height is half a pixel away from the grid.
    for (const double offset : {0.0, 0.5, 1.0 / 3}) {
        QImage image = canvas({40, 40}, 1.5);
        QPainter painter(&image);
        painter.translate(3, 5);
        Symbol::paint(&painter, u"trash"_s, QRectF(offset, offset, 16, 16), tint);
        painter.end();
        const QPoint corner = QPointF((3 + offset) * 1.5, (5 + offset) * 1.5).toPoint();
        const QImage expected = reference(u"trash"_s, 24, tint);
        QCOMPARE(withoutRatio(image).copy(QRect(corner, expected.size())), expected);
    }
}

void SymbolTest::makesIconsWithAPixelForEveryPixel_data() {
    QTest::addColumn<double>("ratio");
    for (const double ratio : {1.0, 1.5, 2.0})
        QTest::addRow("%.1f", ratio) << ratio;
}

void SymbolTest::makesIconsWithAPixelForEveryPixel() {
    QFETCH(double, ratio);
    const QPixmap pixmap = Symbol::icon(u"eye"_s).pixmap(QSize(16, 16), ratio);
    QCOMPARE(pixmap.size(), (QSizeF(16, 16) * ratio).toSize());
    const QColor color = QGuiApplication::palette().color(QPalette::ButtonText);
    QCOMPARE(withoutRatio(pixmap.toImage()).convertToFormat(QImage::Format_ARGB32_Premultiplied),
             reference(u"eye"_s, pixmap.width(), color));
}

void SymbolTest::takesAnIconsColourFromThePalette() {
    const QIcon icon = Symbol::icon(u"eye"_s);
    const auto drawn = [&icon] {
        QImage image = canvas({16, 16}, 2);
        QPainter painter(&image);
        icon.paint(&painter, QRect(0, 0, 16, 16));
        painter.end();
        return withoutRatio(image);
    };
    for (const bool isDark : {false, true}) {
        Look::setDark(isDark);
        const QColor color = QGuiApplication::palette().color(QPalette::ButtonText);
        QCOMPARE(drawn(), reference(u"eye"_s, 32, color));
    }
    Look::setDark(false);
}

void SymbolTest::paleWhenDisabled() {
    const QIcon icon = Symbol::icon(u"eye"_s);
    const QColor color = QGuiApplication::palette().color(QPalette::Disabled, QPalette::ButtonText);
    QVERIFY(color != QGuiApplication::palette().color(QPalette::ButtonText));
    QCOMPARE(icon.pixmap(QSize(16, 16), 1, QIcon::Disabled)
                 .toImage()
                 .convertToFormat(QImage::Format_ARGB32_Premultiplied),
             reference(u"eye"_s, 16, color));
}

LUMORA_UI_TEST_MAIN(SymbolTest)
#include "tst_symbol.moc"
