// SPDX-License-Identifier: MIT
#include "widgets/RoundedPicture.h"

#include <QPainter>
#include <QPainterPath>

RoundedPicture::RoundedPicture(QPixmap picture, int side, double radius, QWidget* parent)
    : QWidget(parent), m_picture(std::move(picture)), m_radius(radius) {
    setFixedSize(side, side);
}

void RoundedPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    // As a brush, so that the corners are smooth; a clip would leave steps.
    QBrush brush(m_picture);
    const QSizeF pixels = m_picture.size();
    brush.setTransform(QTransform::fromScale(width() / pixels.width(), height() / pixels.height()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    painter.drawRoundedRect(rect(), m_radius, m_radius);
}
