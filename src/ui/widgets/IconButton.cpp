// SPDX-License-Identifier: MIT
#include "widgets/IconButton.h"

#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Symbol.h"
#include "style/Theme.h"
#include "widgets/DisplayText.h"

#include <QPainter>

IconButton::IconButton(QString symbol, const QString& toolTip, QWidget* parent)
    : KeyboardButton(parent), m_symbol(std::move(symbol)) {
    setFixedSize(sizeHint());
    DisplayText::setToolTip(this, toolTip);
    setAccessibleName(toolTip);
    setFocusPolicy(Qt::StrongFocus);
}

void IconButton::setSymbolSize(int size) {
    m_symbolSize = size;
    update();
}

QSize IconButton::sizeHint() const {
    return {Metrics::controlHeight, Metrics::controlHeight};
}

void IconButton::paintEvent(QPaintEvent*) {
    constexpr double disabledOpacity = 0.35;
    const Theme& theme = Theme::of(this);
    QPainter painter(this);
    if (isEnabled() && (isDown() || underMouse()))
        Painting::fillRounded(&painter, rect(), Metrics::controlRadius,
                              isDown() ? theme.pressed : theme.hover);
    if (Painting::showsFocus(this))
        Painting::drawFocusRing(&painter, rect(), Metrics::controlRadius, theme);
    QRect icon(0, 0, m_symbolSize, m_symbolSize);
    icon.moveCenter(rect().center());
    Symbol::paint(&painter, m_symbol, icon,
                  isEnabled() ? theme.text : withOpacity(theme.text, disabledOpacity));
}

void IconButton::enterEvent(QEnterEvent*) {
    update();
}

// The toolkit's own repainting on hover leaves this out when a menu opens over the button.
void IconButton::leaveEvent(QEvent*) {
    update();
}
