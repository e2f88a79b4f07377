// SPDX-License-Identifier: MIT
#include "widgets/Spinner.h"

#include "style/Metrics.h"
#include "style/Theme.h"

#include <QDateTime>
#include <QPainter>
#include <QStyle>

namespace {

constexpr int usualInterval = 66;
constexpr int calmInterval = 1'000;

bool isCalm(const QWidget* widget) {
    return widget->style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, widget) <= 0;
}

} // namespace

Spinner::Spinner(Size size, QWidget* parent) : QWidget(parent) {
    constexpr int large = 32;
    const int side = size == Size::Small ? Metrics::smallSpinner : large;
    setFixedSize(side, side);
}

int Spinner::interval(const QWidget* widget) {
    return isCalm(widget) ? calmInterval : usualInterval;
}

void Spinner::paint(QPainter* painter, const QRectF& rect, const QWidget* widget) {
    constexpr int usualTurn = 900;
    constexpr int ticks = 8;
    constexpr int sixteenths = 16 * 360;
    constexpr int arc = 16 * 110;
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const bool calm = isCalm(widget);
    const int turn = calm ? ticks : usualTurn;
    const auto phase = static_cast<int>((calm ? now / calmInterval : now) % turn);
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
    // Nobody is woken for what is not painted: in a minimised window, scrolled out of sight,
    // covered.
    if (!m_timer.isActive())
        m_timer.start(interval(this), this);
}

void Spinner::timerEvent(QTimerEvent*) {
    m_timer.stop();
    update();
}
