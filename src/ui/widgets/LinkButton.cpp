// SPDX-License-Identifier: MIT
#include "widgets/LinkButton.h"

#include "style/Painting.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/DisplayText.h"
#include "widgets/OpenAddress.h"

#include <QPainter>

LinkButton::LinkButton(const QString& text, QString address, QWidget* parent)
    : QAbstractButton(parent), m_address(std::move(address)) {
    setText(DisplayText::line(text));
    setAccessibleName(this->text());
    setFont(Typography::font(Typography::body));
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(this, &LinkButton::clicked, this, [this] { openAddress(m_address); });
}

QSize LinkButton::sizeHint() const {
    return {Typography::width(font(), text()) + 2 * focusMargin, fontMetrics().height() + 2};
}

QSize LinkButton::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

void LinkButton::paintEvent(QPaintEvent*) {
    constexpr double focusRadius = 4;
    const Theme& theme = Theme::of(this);
    QPainter painter(this);
    if (Painting::showsFocus(this))
        Painting::drawFocusRing(&painter, rect(), focusRadius, theme);
    QFont shown = font();
    shown.setUnderline(underMouse());
    painter.setFont(shown);
    painter.setPen(theme.accent);
    const QRect area = rect().adjusted(focusMargin, 0, -focusMargin, 0);
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideRight, area.width()));
}

void LinkButton::enterEvent(QEnterEvent*) {
    update();
}

void LinkButton::leaveEvent(QEvent*) {
    update();
}
