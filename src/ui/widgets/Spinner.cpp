// SPDX-License-Identifier: MIT
#include "widgets/Spinner.h"

#include "style/Metrics.h"
#include "style/Theme.h"

#include <QDateTime>
#include <QPainter>

Spinner::Spinner(Size size, QWidget* parent) : QWidget(parent) {
    constexpr int large = 32;
    const int side = size == Size::Small ? Metrics::smallSpinner : large;
    setFixedSize(side, side);
}

void Spinner::paint(QPainter* painter, const QRectF& rect, const QWidget* widget) {
    constexpr int turn = 900;
    constexpr int sixteenths = 16 * 360;
    constexpr int arc = 16 * 110;
    const auto phase = static_cast<int>(QDateTime::currentMSecsSinceEpoch() % turn);
    const Theme& theme = Theme::of(widget);
    const double width = qMax(1.6, rect.width() / 9);
    const QRectF circle = rect.adjusted(width / 2, width / 2, -width / 2, -width / 2);

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(theme.fieldBorder, width));
    painter->drawEllipse(circle);
    painter->setPen(QPen(theme.secondaryText, width, Qt::SolidLine, Qt::RoundCap));
    painter->drawArc(circle, -(sixteenths * phase / turn), arc);
    painter->restore();
}

void Spinner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paint(&painter, rect(), this);
}

void Spinner::showEvent(QShowEvent*) {
    m_timer.start(interval, this);
}

void Spinner::hideEvent(QHideEvent*) {
    m_timer.stop();
}

void Spinner::timerEvent(QTimerEvent*) {
    update();
}
