// SPDX-License-Identifier: MIT
#include "widgets/RowDelegate.h"

#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Symbol.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/DisplayText.h"
#include "widgets/RowListView.h"
#include "widgets/Spinner.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int sectionHeight = 30;
constexpr int buttonHeight = 24;
constexpr int buttonPadding = 11;
constexpr int badgePaddingX = 6;
constexpr int badgePaddingY = 2;
constexpr double badgeRadius = 4;
constexpr int tagPaddingX = 5;
constexpr int tagPaddingY = 1;
constexpr int tagSpacing = 6;
constexpr double tagRadius = 3;
constexpr double trashOpacity = 0.7;
constexpr double badgeOpacity = 0.1;

QRect selectionRect(const QRect& rect) {
    return rect.adjusted(Metrics::rowInset, 0, -Metrics::rowInset, 0);
}

QRect contentRect(const QRect& rect) {
    return rect.adjusted(Metrics::contentMargin, 0, -Metrics::contentMargin, 0);
}

/// Draws as much of the text as fits and returns the width that it took.
int drawText(QPainter* painter, const QRect& rect, const QFont& font, const QColor& color,
             const QString& text, Qt::Alignment alignment = Qt::AlignLeft) {
    const QFontMetrics metrics(font);
    const QString shown =
        metrics.elidedText(DisplayText::line(text), Qt::ElideRight, qMax(0, rect.width()));
    painter->setFont(font);
    painter->setPen(color);
    painter->drawText(rect, static_cast<int>(alignment | Qt::AlignVCenter | Qt::TextSingleLine),
                      shown);
    return Typography::width(font, shown);
}

QColor symbolColor(Row::Tone tone, const Theme& theme) {
    return tone == Row::Tone::Cask ? theme.cask : theme.accent;
}

} // namespace

RowDelegate::RowDelegate(int itemHeight, QObject* parent)
    : QStyledItemDelegate(parent),
      m_itemHeight(itemHeight),
      m_titleFont(Typography::font(Typography::body, QFont::Medium)),
      m_subtitleFont(Typography::digits(Typography::caption)),
      m_newVersionFont(Typography::digits(Typography::caption, QFont::Medium)),
      m_tagFont(Typography::font(Typography::tag, QFont::Medium)),
      m_versionFont(Typography::digits(12)),
      m_sectionFont(Typography::digits(Typography::caption, QFont::DemiBold)),
      m_buttonFont(Typography::font(12, QFont::Medium)),
      m_badgeFont(Typography::font(Typography::caption, QFont::Medium)) {}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const auto* const view = static_cast<const RowListView*>(option.widget);
    const bool isSection = view->rows().isSection(index.row());
    return {option.rect.width(), isSection ? sectionHeight : m_itemHeight};
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
    const auto* const view = static_cast<const RowListView*>(option.widget);
    const Theme& theme = Theme::of(view);
    const Row row = view->rows().row(index);
    painter->save();
    if (row.kind == Row::Kind::Section) {
        paintSection(painter, option.rect, row, theme);
        painter->restore();
        return;
    }

    const State state = view->stateOf(index, row);
    const QRect selection = selectionRect(option.rect);
    if (state.isSelected)
        Painting::fillRounded(painter, selection, Metrics::rowRadius, theme.selection);
    else if (state.isHovered)
        Painting::fillRounded(painter, selection, Metrics::rowRadius, theme.hover);
    if (state.isCurrent && !state.isActionCurrent)
        Painting::drawFocusRing(painter, selection, Metrics::rowRadius, theme);

    QRect area = contentRect(option.rect);
    if (state.hasHairline)
        Painting::drawHairline(painter, area, theme);
    if (!row.symbol.isEmpty()) {
        const QRect icon(area.left(), area.center().y() - Metrics::rowIcon / 2, Metrics::rowIcon,
                         Metrics::rowIcon);
        Symbol::paint(painter, row.symbol, icon, symbolColor(row.symbolTone, theme));
        area.setLeft(icon.right() + 1 + Metrics::rowSpacing);
    }
    if (row.action.kind != RowAction::Kind::None) {
        paintAction(painter, option.rect, row, state, view);
        area.setRight(actionRect(option.rect, row.action).left() - 1 - Metrics::rowSpacing);
    }
    if (!row.version.isEmpty()) {
        // A version of absurd length doesn't push the name out of its row.
        const QRect half = area.adjusted(area.width() / 2, 0, 0, 0);
        area.setRight(area.right() - Metrics::rowSpacing -
                      drawText(painter, half, m_versionFont, theme.secondaryText, row.version,
                               Qt::AlignRight));
    }
    paintTexts(painter, area, row, state.isSelected, theme);
    painter->restore();
}

void RowDelegate::paintSection(QPainter* painter, const QRect& rect, const Row& row,
                               const Theme& theme) const {
    constexpr int belowText = 5;
    drawText(painter, contentRect(rect).adjusted(0, belowText, 0, 0), m_sectionFont,
             theme.secondaryText, row.title);
}

void RowDelegate::paintTexts(QPainter* painter, QRect area, const Row& row, bool isSelected,
                             const Theme& theme) const {
    if (row.subtitle.isEmpty() && row.newVersion.isEmpty()) {
        paintTitleLine(painter, area, row, theme);
        return;
    }
    const int middle = area.center().y() + 1;
    constexpr int lineHeight = 17;
    paintTitleLine(painter, QRect(area.left(), middle - lineHeight, area.width(), lineHeight), row,
                   theme);
    paintSubtitle(painter, QRect(area.left(), middle, area.width(), lineHeight), row, isSelected,
                  theme);
}

void RowDelegate::paintTitleLine(QPainter* painter, const QRect& line, const Row& row,
                                 const Theme& theme) const {
    const QFontMetrics metrics(m_tagFont);
    const int tagHeight = metrics.height() + 2 * tagPaddingY;
    QList<int> widths;
    int allTags = 0;
    for (const RowTag& tag : row.tags) {
        widths.append(Typography::width(m_tagFont, tag.text) + 2 * tagPaddingX);
        allTags += tagSpacing + widths.constLast();
    }

    int x = line.left() +
            drawText(painter, line.adjusted(0, 0, -allTags, 0), m_titleFont, theme.text, row.title);
    for (qsizetype i = 0; i < row.tags.size(); ++i) {
        const RowTag& tag = row.tags.at(i);
        const bool isOutdated = tag.tone == RowTag::Tone::Outdated;
        const QRect box(x + tagSpacing, line.center().y() - tagHeight / 2, widths.at(i), tagHeight);
        Painting::fillRounded(painter, box, tagRadius,
                              isOutdated ? theme.outdatedTag : theme.neutralTag);
        drawText(painter, box, m_tagFont, isOutdated ? theme.outdatedOnTint : theme.secondaryOnTint,
                 tag.text, Qt::AlignHCenter);
        x = box.right() + 1;
    }
}

void RowDelegate::paintSubtitle(QPainter* painter, const QRect& line, const Row& row,
                                bool isSelected, const Theme& theme) const {
    constexpr int spacing = 4;
    constexpr int arrow = 11;
    if (row.newVersion.isEmpty()) {
        drawText(painter, line, m_subtitleFont, theme.secondaryText, row.subtitle);
        return;
    }
    const QRect old = line.adjusted(0, 0, -line.width() / 2, 0);
    int x = line.left() +
            drawText(painter, old, m_subtitleFont, theme.secondaryText, row.subtitle) + spacing;
    const QRect arrowRect(x, line.center().y() - arrow / 2, arrow, arrow);
    Symbol::paint(painter, u"arrow.right"_s, arrowRect, theme.secondaryText);
    x = arrowRect.right() + 1 + spacing;
    drawText(painter, line.adjusted(x - line.left(), 0, 0, 0), m_newVersionFont,
             isSelected ? theme.outdatedOnTint : theme.outdated, row.newVersion);
}

QRect RowDelegate::actionRect(const QRect& rect, const RowAction& action) const {
    QSize size;
    switch (action.kind) {
    case RowAction::Kind::None:
        return {};
    case RowAction::Kind::Trash:
        size = {Metrics::trashIcon, Metrics::trashIcon};
        break;
    case RowAction::Kind::Spinner:
        size = {Metrics::smallSpinner, Metrics::smallSpinner};
        break;
    case RowAction::Kind::Button:
        size = {Typography::width(m_buttonFont, action.title) + 2 * buttonPadding, buttonHeight};
        break;
    case RowAction::Kind::Badge:
        size = {Typography::width(m_badgeFont, action.title) + 2 * badgePaddingX,
                QFontMetrics(m_badgeFont).height() + 2 * badgePaddingY};
        break;
    }
    const QRect content = contentRect(rect);
    return {QPoint(content.right() + 1 - size.width(),
                   content.top() + (content.height() - size.height()) / 2),
            size};
}

QRect RowDelegate::actionHitRect(const QRect& rect, const RowAction& action) const {
    if (action.kind != RowAction::Kind::Trash)
        return actionRect(rect, action);
    constexpr int generosity = 7;
    return actionRect(rect, action).adjusted(-generosity, -generosity, generosity, generosity);
}

void RowDelegate::paintAction(QPainter* painter, const QRect& rect, const Row& row,
                              const State& state, const QWidget* widget) const {
    const Theme& theme = Theme::of(widget);
    const QRect area = actionRect(rect, row.action);
    const QRect hitArea = actionHitRect(rect, row.action);
    switch (row.action.kind) {
    case RowAction::Kind::None:
        break;
    case RowAction::Kind::Trash: {
        const bool isLit = state.isActionHovered || state.isActionCurrent;
        if (isLit)
            Painting::fillRounded(painter, hitArea, Metrics::buttonRadius,
                                  state.isActionPressed ? theme.pressed : theme.hover);
        Symbol::paint(painter, u"trash"_s, area,
                      isLit || state.isSelected ? theme.destructive
                                                : withOpacity(theme.destructive, trashOpacity));
        break;
    }
    case RowAction::Kind::Spinner:
        Spinner::paint(painter, area, widget);
        break;
    case RowAction::Kind::Button: {
        const bool isEnabled = row.action.isEnabled;
        Painting::drawButton(painter, area, theme,
                             {.isEnabled = isEnabled,
                              .isHovered = state.isActionHovered,
                              .isPressed = state.isActionPressed});
        drawText(painter, area, m_buttonFont,
                 isEnabled ? theme.text : withOpacity(theme.secondaryText, 0.6), row.action.title,
                 Qt::AlignHCenter);
        break;
    }
    case RowAction::Kind::Badge:
        Painting::fillRounded(painter, area, badgeRadius, withOpacity(theme.good, badgeOpacity));
        drawText(painter, area, m_badgeFont, theme.goodOnTint, row.action.title, Qt::AlignHCenter);
        break;
    }
    if (state.isActionCurrent)
        Painting::drawFocusRing(painter, hitArea, Metrics::buttonRadius, theme);
}
