// SPDX-License-Identifier: MIT
#include "shell/SidebarDelegate.h"

#include "style/Painting.h"
#include "style/Symbol.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/DisplayText.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace {

constexpr int rowHeight = 30;
constexpr int sectionHeight = 34;
constexpr int rowInset = 10;
constexpr double rowRadius = 6;
constexpr int padding = 8;
constexpr int iconSize = 18;
constexpr int iconSpacing = 8;
constexpr int pillPaddingX = 6;
constexpr int pillPaddingY = 1;

} // namespace

SidebarDelegate::SidebarDelegate(QObject* parent)
    : QStyledItemDelegate(parent),
      m_sectionFont(Typography::font(Typography::sectionTitle, QFont::DemiBold)),
      m_titleFont(Typography::font(Typography::body, QFont::Medium)),
      m_badgeFont(Typography::digits(12)),
      m_pillFont(Typography::digits(Typography::caption, QFont::Bold)) {}

QSize SidebarDelegate::sizeHint(const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    const bool isSection = !index.data(CategoryRole).isValid();
    return {option.rect.width(), isSection ? sectionHeight : rowHeight};
}

void SidebarDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    const Theme& theme = Theme::of(option.widget);
    const QRect row = option.rect.adjusted(rowInset, 0, -rowInset, 0);
    painter->save();
    if (!index.data(CategoryRole).isValid()) {
        constexpr int belowText = 9;
        painter->setFont(m_sectionFont);
        painter->setPen(theme.secondaryText);
        painter->drawText(row.adjusted(padding, belowText, -padding, 0),
                          Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          index.data().toString());
        painter->restore();
        return;
    }

    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    if (isSelected)
        Painting::fillRounded(painter, row, rowRadius, theme.selection);
    else if (option.state.testFlag(QStyle::State_MouseOver))
        Painting::fillRounded(painter, row, rowRadius, theme.hover);
    if (option.state.testFlag(QStyle::State_HasFocus) &&
        option.state.testFlag(QStyle::State_KeyboardFocusChange))
        Painting::drawFocusRing(painter, row, rowRadius, theme);

    const QRect area = row.adjusted(padding, 0, -padding, 0);
    const QRect icon(area.left(), area.center().y() - iconSize / 2 + 1, iconSize, iconSize);
    Symbol::paint(painter, index.data(SymbolRole).toString(), icon, theme.accent);
    paintBadge(painter, badgeRect(area, index), index, isSelected, theme);
    const QRect title = titleRect(option.rect, index);
    painter->setFont(m_titleFont);
    painter->setPen(theme.text);
    painter->drawText(title, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      QFontMetrics(m_titleFont)
                          .elidedText(index.data().toString(), Qt::ElideRight, title.width()));
    painter->restore();
}

QRect SidebarDelegate::titleRect(const QRect& rect, const QModelIndex& index) const {
    QRect area = rect.adjusted(rowInset + padding, 0, -rowInset - padding, 0);
    const QRect badge = badgeRect(area, index);
    area.setLeft(area.left() + iconSize + iconSpacing);
    if (badge.isValid())
        area.setRight(badge.left() - 1 - padding);
    return area;
}

QRect SidebarDelegate::badgeRect(const QRect& area, const QModelIndex& index) const {
    const QString text = index.data(BadgeRole).toString();
    if (text.isEmpty())
        return {};
    const bool isPill = index.data(IsPillRole).toBool();
    const QFontMetrics metrics(isPill ? m_pillFont : m_badgeFont);
    QRect box(0, 0, metrics.horizontalAdvance(text), metrics.height());
    if (isPill) {
        box = box.adjusted(0, 0, 2 * pillPaddingX, 2 * pillPaddingY);
        box.setWidth(qMax(box.width(), box.height()));
    }
    box.moveCenter(area.center());
    box.moveRight(area.right());
    return box;
}

void SidebarDelegate::paintBadge(QPainter* painter, const QRect& box, const QModelIndex& index,
                                 bool isSelected, const Theme& theme) const {
    if (!box.isValid())
        return;
    const bool isPill = index.data(IsPillRole).toBool();
    if (isPill)
        Painting::fillRounded(painter, box, box.height() / 2.0, theme.countPill);
    painter->setFont(isPill ? m_pillFont : m_badgeFont);
    const QColor count = isSelected ? theme.secondaryOnTint : theme.secondaryText;
    painter->setPen(isPill ? theme.onCountPill : count);
    painter->drawText(box, Qt::AlignCenter | Qt::TextSingleLine, index.data(BadgeRole).toString());
}

bool SidebarDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QString title = index.data().toString();
    const bool isCut =
        index.data(CategoryRole).isValid() &&
        Typography::width(m_titleFont, title) > titleRect(option.rect, index).width();
    QToolTip::showText(event->globalPos(), isCut ? DisplayText::toolTip(title) : QString(), view,
                       option.rect);
    return true;
}
