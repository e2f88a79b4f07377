// SPDX-License-Identifier: MIT
#include "UiTest.h"
#include "style/Painting.h"

#include <QImage>
#include <QPainter>

class PaintingTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void castsTheSameShadowOnAllSides_data();
    void castsTheSameShadowOnAllSides();
    void castsShadowsOfEachColour();
};

namespace {

constexpr QSize room{300, 200};
constexpr int shadowRadius = 18;
const QRect panel{50, 40, 200, 120};

QImage shadowIn(const QColor& color, double devicePixelRatio) {
    QImage image(room * devicePixelRatio, QImage::Format_RGB32);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Qt::white);
    QPainter painter(&image);
    Painting::drawShadow(&painter, panel, 12, shadowRadius, color);
    return image;
}

} // namespace

void PaintingTest::castsTheSameShadowOnAllSides_data() {
    QTest::addColumn<int>("ratio");
    // The same picture won't do for another ratio.
    QTest::newRow("usual") << 1;
    QTest::newRow("fine") << 2;
}

void PaintingTest::castsTheSameShadowOnAllSides() {
    QFETCH(int, ratio);
    const QImage image = shadowIn(Qt::black, ratio);
    const QRect pixels(panel.topLeft() * ratio, panel.size() * ratio);
    const QPoint middle = pixels.center();
    QCOMPARE(image.pixelColor(middle), QColor(Qt::white));
    const auto leftOf = [&](int distance) {
        return image.pixel(pixels.left() - 1 - distance, middle.y());
    };
    QVERIFY(qGray(leftOf(0)) < 160);
    for (int distance = 0; distance < shadowRadius * ratio; ++distance) {
        QCOMPARE(image.pixel(pixels.right() + 1 + distance, middle.y()), leftOf(distance));
        QCOMPARE(image.pixel(middle.x(), pixels.top() - 1 - distance), leftOf(distance));
        QCOMPARE(image.pixel(middle.x(), pixels.bottom() + 1 + distance), leftOf(distance));
        QVERIFY(qGray(leftOf(distance)) <= qGray(leftOf(distance + 1)));
    }
    // A step for each pixel of the window, whatever that is on the screen.
    QVERIFY(qGray(leftOf(ratio - 1)) < qGray(leftOf(ratio)));
    QVERIFY(qGray(leftOf((shadowRadius - 1) * ratio)) < 255);
    QCOMPARE(qGray(leftOf(shadowRadius * ratio)), 255);
}

void PaintingTest::castsShadowsOfEachColour() {
    const QImage strong = shadowIn(Qt::black, 1);
    QVERIFY(shadowIn(QColor(0, 0, 0, 100), 1) != strong);
    QCOMPARE(shadowIn(Qt::black, 1), strong);
}

LUMORA_UI_TEST_MAIN(PaintingTest)
#include "tst_painting.moc"
