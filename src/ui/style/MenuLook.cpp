// SPDX-License-Identifier: MIT
#include "style/MenuLook.h"

#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Theme.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int entryHeight = 28;
constexpr int separatorHeight = 9;
constexpr int padding = 10;
constexpr int beforeKey = 28;
constexpr int arrowSize = 14;

bool isSeparator(const QStyleOptionMenuItem& option) {
    return option.menuItemType == QStyleOptionMenuItem::Separator;
}

void paintArrow(QPainter* painter, const QRect& area, const QColor& color) {
    constexpr double depth = 3.5;
    constexpr double thickness = 1.6;
    const QPointF tip(area.right() - depth, area.center().y() + 0.5);
    painter->setPen(QPen(color, thickness, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->setBrush(Qt::NoBrush);
    painter->drawPolyline(
        QPolygonF{tip - QPointF(depth, depth), tip, tip - QPointF(depth, -depth)});
}

} // namespace

void MenuLook::paintPanel(QPainter* painter, const QStyleOption& option) {
    const Theme& theme = Theme::of(option.palette);
    Painting::drawBordered(painter, option.rect, Metrics::rowRadius, theme.card, theme.fieldBorder);
}

void MenuLook::paintEntry(QPainter* painter, const QStyleOptionMenuItem& option,
                          Qt::TextFlag mnemonic) {
    const Theme& theme = Theme::of(option.palette);
    const QRect text = option.rect.adjusted(padding, 0, -padding, 0);
    if (isSeparator(option)) {
        painter->fillRect(QRect(text.left(), text.center().y(), text.width(), 1), theme.hairline);
        return;
    }
    const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
    if (option.state.testFlag(QStyle::State_Selected))
        Painting::fillRounded(painter, option.rect, Metrics::buttonRadius, theme.selection);
    const QColor dimmed = option.palette.color(QPalette::Disabled, QPalette::Text);
    const qsizetype tab = option.text.indexOf(u'\t');
    const auto draw = [&](const QString& part, const QColor& color, Qt::Alignment side) {
        painter->setPen(isEnabled ? color : dimmed);
        painter->drawText(
            text, static_cast<int>(side | Qt::AlignVCenter) | Qt::TextSingleLine | mnemonic, part);
    };
    painter->setFont(option.font);
    draw(option.text.first(tab < 0 ? option.text.size() : tab), theme.text, Qt::AlignLeft);
    if (tab >= 0)
        draw(option.text.sliced(tab + 1), theme.secondaryOnTint, Qt::AlignRight);
    if (option.menuItemType == QStyleOptionMenuItem::SubMenu)
        paintArrow(painter, text, isEnabled ? theme.secondaryText : dimmed);
}

QSize MenuLook::entrySize(const QStyleOptionMenuItem& option, const QSize& text) {
    if (isSeparator(option))
        // Of no width at all it would be left out.
        return {1, separatorHeight};
    int width = text.width() + 2 * padding;
    if (option.text.contains(u'\t'))
        width += beforeKey;
    if (option.menuItemType == QStyleOptionMenuItem::SubMenu)
        width += arrowSize;
    return {width, std::max(entryHeight, text.height())};
}

QRegion MenuLook::rounded(const QRect& rect) {
    // Masks know whole pixels only: a tighter curve than the border's leaves that what it needs.
    constexpr int radius = Metrics::rowRadius - 3;
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return QRegion(path.toFillPolygon().toPolygon());
}
