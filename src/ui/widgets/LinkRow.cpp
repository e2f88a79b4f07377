// SPDX-License-Identifier: MIT
#include "widgets/LinkRow.h"

#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Symbol.h"
#include "style/Theme.h"
#include "style/Typography.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int rowWidth = 260;
constexpr int paddingX = 12;
constexpr int paddingY = 8;
constexpr int iconFrame = 20;
constexpr int symbolSize = 18;
constexpr int arrowSize = 12;

} // namespace

LinkRow::LinkRow(QString symbol, const QString& title, QWidget* parent)
    : QAbstractButton(parent), m_symbol(std::move(symbol)) {
    setText(title);
    setAccessibleName(title);
    setFont(Typography::font(Typography::body));
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(sizeHint());
}

QSize LinkRow::sizeHint() const {
    return {rowWidth, qMax(fontMetrics().height(), symbolSize) + 2 * paddingY};
}

void LinkRow::paintEvent(QPaintEvent*) {
    constexpr double fillOpacity = 0.04;
    const Theme& theme = Theme::of(this);
    QPainter painter(this);
    Painting::fillRounded(&painter, rect(), Metrics::buttonRadius,
                          withOpacity(theme.text, fillOpacity));
    if (isDown() || underMouse())
        Painting::fillRounded(&painter, rect(), Metrics::buttonRadius,
                              isDown() ? theme.pressed : theme.hover);
    if (Painting::showsFocus(this))
        Painting::drawFocusRing(&painter, rect(), Metrics::buttonRadius, theme);

    const QRect content = rect().adjusted(paddingX, 0, -paddingX, 0);
    QRect icon(0, 0, symbolSize, symbolSize);
    icon.moveCenter(content.center());
    icon.moveLeft(content.left() + (iconFrame - symbolSize) / 2);
    Symbol::paint(&painter, m_symbol, icon, theme.text);
    painter.setFont(font());
    painter.setPen(theme.text);
    painter.drawText(content.adjusted(iconFrame + paddingY, 0, 0, 0),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text());
    QRect arrow(0, 0, arrowSize, arrowSize);
    arrow.moveCenter(content.center());
    arrow.moveRight(content.right());
    Symbol::paint(&painter, u"arrow.up.right"_s, arrow, theme.secondaryText);
}

void LinkRow::enterEvent(QEnterEvent*) {
    update();
}

void LinkRow::leaveEvent(QEvent*) {
    update();
}
