// SPDX-License-Identifier: MIT
#include "widgets/RowDelegate.h"

#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Symbol.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/DisplayText.h"
#include "widgets/RowModel.h"
#include "widgets/Spinner.h"

#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int headingHeight = 30;
constexpr int buttonHeight = 24;
constexpr int buttonPadding = 11;
constexpr int badgePaddingX = 6;
constexpr int badgePaddingY = 2;
constexpr double badgeRadius = 4;
constexpr int tagPaddingX = 5;
constexpr int tagPaddingY = 1;
constexpr int tagSpacing = 6;
constexpr double tagRadius = 3;
constexpr int versionSpacing = 4;
constexpr int arrowSize = 11;
constexpr double trashOpacity = 0.7;
constexpr double badgeOpacity = 0.1;

/// What a row has of the list's width, without so much on both sides.
QRect inset(const QRect& rect, int margin) {
    const int beside = std::max(0, (rect.width() - Metrics::widestContent) / 2) + margin;
    return rect.adjusted(beside, 0, -beside, 0);
}

QRect contentRect(const QRect& rect) {
    return inset(rect, Metrics::contentMargin);
}

/// As much of the text as fits.
QString fitted(const QFontMetrics& metrics, const QString& text, int width) {
    return metrics.elidedText(DisplayText::line(text), Qt::ElideRight, qMax(0, width));
}

/// Draws as much of the text as fits and returns the width that it took: where it is drawn, fonts
/// may come out wider or narrower than they do on the screen that they are measured for.
int drawText(QPainter* painter, const QRect& rect, const QFont& font, const QColor& color,
             const QString& text, Qt::Alignment alignment = Qt::AlignLeft) {
    const QString shown = fitted(QFontMetrics(font, painter->device()), text, rect.width());
    painter->setFont(font);
    painter->setPen(color);
    QRect drawn;
    painter->drawText(rect, static_cast<int>(alignment | Qt::AlignVCenter | Qt::TextSingleLine),
                      shown, &drawn);
    return drawn.width();
}

constexpr int lineHeight = 17;

/// The first of the row's two lines, or the only one.
QRect titleLine(const QRect& area, const Row& row) {
    if (row.subtitle.isEmpty() && row.newVersion.isEmpty())
        return area;
    return {area.left(), area.center().y() + 1 - lineHeight, area.width(), lineHeight};
}

QColor symbolColor(Row::Tone tone, const Theme& theme) {
    return tone == Row::Tone::Cask ? theme.cask : theme.accent;
}

/// Where a click counts as one on what is drawn in `area`.
QRect hitRect(const QRect& area, RowAction::Kind kind) {
    constexpr int generosity = 7;
    return kind == RowAction::Kind::Trash
               ? area.adjusted(-generosity, -generosity, generosity, generosity)
               : area;
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
      m_headingFont(Typography::digits(Typography::caption, QFont::DemiBold)),
      m_buttonFont(Typography::font(12, QFont::Medium)),
      m_badgeFont(Typography::font(Typography::caption, QFont::Medium)) {}

QRect RowDelegate::rowRect(const QRect& rect) {
    return inset(rect, Metrics::rowInset);
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    return {option.rect.width(), RowModel::isRow(index) ? m_itemHeight : headingHeight};
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
    const Theme& theme = Theme::of(option.widget);
    const auto row = index.data(RowModel::DescriptionRole).value<Row>();
    painter->save();
    if (!RowModel::isRow(index)) {
        paintHeading(painter, option.rect, row.title, theme);
        painter->restore();
        return;
    }

    const auto state = index.data(RowModel::StateRole).value<RowState>();
    const QRect selection = rowRect(option.rect);
    if (state.isSelected)
        Painting::fillRounded(painter, selection, Metrics::rowRadius, theme.selection);
    else if (state.isHovered)
        Painting::fillRounded(painter, selection, Metrics::rowRadius, theme.hover);
    if (state.isCurrent && !state.currentAction)
        Painting::drawFocusRing(painter, selection, Metrics::rowRadius, theme);

    const QRect content = contentRect(option.rect);
    if (state.hasHairline)
        Painting::drawHairline(painter, content, theme);
    if (!row.symbol.isEmpty()) {
        const QRect icon(content.left(), content.center().y() - Metrics::rowIcon / 2,
                         Metrics::rowIcon, Metrics::rowIcon);
        Symbol::paint(painter, row.symbol, icon, symbolColor(row.symbolTone, theme));
    }
    const QList<QRect> actions = actionRects(option.rect, row);
    for (qsizetype i = 0; i < actions.size(); ++i)
        paintAction(painter, actions.at(i), row, i, state, option.widget);
    const Room room = roomIn(option.rect, row);
    drawText(painter, room.version, m_versionFont, theme.secondaryText, row.version,
             Qt::AlignRight);
    paintTexts(painter, room.texts, row, state.isSelected, theme);
    painter->restore();
}

RowDelegate::Room RowDelegate::roomIn(const QRect& rect, const Row& row) const {
    QRect area = contentRect(rect);
    if (!row.symbol.isEmpty())
        area.setLeft(area.left() + Metrics::rowIcon + Metrics::rowSpacing);
    const QList<QRect> actions = actionRects(rect, row);
    if (!actions.isEmpty())
        area.setRight(actions.constFirst().left() - 1 - Metrics::rowSpacing);
    if (row.version.isEmpty())
        return {area, {}};
    // A version of absurd length doesn't push the name out of its row.
    const QRect half = area.adjusted(area.width() / 2, 0, 0, 0);
    const int width = Typography::width(m_versionFont, DisplayText::line(row.version));
    area.setRight(area.right() - Metrics::rowSpacing - qMin(width, half.width()));
    return {area, half};
}

QStringList RowDelegate::cutTexts(const QRect& rect, const Row& row) const {
    const Room room = roomIn(rect, row);
    QStringList cut;
    const auto isCut = [](const QFont& font, const QString& text, int width) {
        return Typography::width(font, DisplayText::line(text)) > width;
    };
    if (isCut(m_titleFont, row.title, room.texts.width() - roomForTags(row)))
        cut.append(row.title);
    const int width = room.texts.width();
    if (row.newVersion.isEmpty()) {
        if (isCut(m_subtitleFont, row.subtitle, width))
            cut.append(row.subtitle);
    } else {
        const int half = width - width / 2;
        const int arrow = 2 * versionSpacing + arrowSize;
        const int old = Typography::width(m_subtitleFont, DisplayText::line(row.subtitle));
        if (old > half || isCut(m_newVersionFont, row.newVersion, width - old - arrow))
            cut.append(row.subtitle + u" → "_s + row.newVersion);
    }
    if (isCut(m_versionFont, row.version, room.version.width()))
        cut.append(row.version);
    return cut;
}

int RowDelegate::widthOf(const RowTag& tag) const {
    return Typography::width(m_tagFont, tag.text) + 2 * tagPaddingX;
}

void RowDelegate::paintHeading(QPainter* painter, const QRect& rect, const QString& title,
                               const Theme& theme) const {
    constexpr int belowText = 5;
    drawText(painter, contentRect(rect).adjusted(0, belowText, 0, 0), m_headingFont,
             theme.secondaryText, title);
}

int RowDelegate::roomForTags(const Row& row) const {
    int room = 0;
    for (const RowTag& tag : row.tags)
        room += tagSpacing + widthOf(tag);
    return room;
}

QList<QRect> RowDelegate::tagsBehind(int x, const QRect& line, const Row& row) const {
    const int height = QFontMetrics(m_tagFont).height() + 2 * tagPaddingY;
    QList<QRect> rects;
    for (const RowTag& tag : row.tags) {
        rects.append({x + tagSpacing, line.center().y() - height / 2, widthOf(tag), height});
        x = rects.constLast().right() + 1;
    }
    return rects;
}

QList<QRect> RowDelegate::tagRects(const QRect& rect, const Row& row) const {
    const QRect line = titleLine(roomIn(rect, row).texts, row);
    const QString title =
        fitted(QFontMetrics(m_titleFont), row.title, line.width() - roomForTags(row));
    return tagsBehind(line.left() + Typography::width(m_titleFont, title), line, row);
}

void RowDelegate::paintTexts(QPainter* painter, QRect area, const Row& row, bool isSelected,
                             const Theme& theme) const {
    const QRect line = titleLine(area, row);
    paintTitleLine(painter, line, row, theme);
    if (line != area)
        paintSubtitle(painter, line.translated(0, lineHeight), row, isSelected, theme);
}

void RowDelegate::paintTitleLine(QPainter* painter, const QRect& line, const Row& row,
                                 const Theme& theme) const {
    const int x = line.left() + drawText(painter, line.adjusted(0, 0, -roomForTags(row), 0),
                                         m_titleFont, theme.text, row.title);
    const QList<QRect> boxes = tagsBehind(x, line, row);
    for (qsizetype i = 0; i < boxes.size(); ++i) {
        const RowTag& tag = row.tags.at(i);
        const bool isOutdated = tag.tone == RowTag::Tone::Outdated;
        Painting::fillRounded(painter, boxes.at(i), tagRadius,
                              isOutdated ? theme.outdatedTag : theme.neutralTag);
        drawText(painter, boxes.at(i), m_tagFont,
                 isOutdated ? theme.outdatedOnTint : theme.secondaryOnTint, tag.text,
                 Qt::AlignHCenter);
    }
}

void RowDelegate::paintSubtitle(QPainter* painter, const QRect& line, const Row& row,
                                bool isSelected, const Theme& theme) const {
    if (row.newVersion.isEmpty()) {
        drawText(painter, line, m_subtitleFont, theme.secondaryText, row.subtitle);
        return;
    }
    const QRect old = line.adjusted(0, 0, -line.width() / 2, 0);
    int x = line.left() +
            drawText(painter, old, m_subtitleFont, theme.secondaryText, row.subtitle) +
            versionSpacing;
    const QRect arrowRect(x, line.center().y() - arrowSize / 2, arrowSize, arrowSize);
    Symbol::paint(painter, u"arrow.right"_s, arrowRect, theme.secondaryText);
    x = arrowRect.right() + 1 + versionSpacing;
    drawText(painter, line.adjusted(x - line.left(), 0, 0, 0), m_newVersionFont,
             isSelected ? theme.outdatedOnTint : theme.outdated, row.newVersion);
}

QSize RowDelegate::sizeOf(const RowAction& action) const {
    switch (action.kind) {
    case RowAction::Kind::Trash:
        return {Metrics::trashIcon, Metrics::trashIcon};
    case RowAction::Kind::Spinner:
        return {Metrics::smallSpinner, Metrics::smallSpinner};
    case RowAction::Kind::Button:
        return {Typography::width(m_buttonFont, action.title) + 2 * buttonPadding, buttonHeight};
    case RowAction::Kind::Badge:
        return {Typography::width(m_badgeFont, action.title) + 2 * badgePaddingX,
                QFontMetrics(m_badgeFont).height() + 2 * badgePaddingY};
    }
    return {};
}

QList<QRect> RowDelegate::actionRects(const QRect& rect, const Row& row) const {
    const QRect content = contentRect(rect);
    QList<QRect> rects(row.actions.size());
    int right = content.right() + 1;
    for (qsizetype i = rects.size() - 1; i >= 0; --i) {
        const QSize size = sizeOf(row.actions.at(i));
        rects[i] = {
            QPoint(right - size.width(), content.top() + (content.height() - size.height()) / 2),
            size};
        right = rects.at(i).left() - Metrics::rowSpacing;
    }
    return rects;
}

QList<QRect> RowDelegate::hitRects(const QRect& rect, const Row& row) const {
    QList<QRect> rects = actionRects(rect, row);
    for (qsizetype i = 0; i < rects.size(); ++i)
        rects[i] = hitRect(rects.at(i), row.actions.at(i).kind);
    return rects;
}

void RowDelegate::paintAction(QPainter* painter, const QRect& area, const Row& row, qsizetype place,
                              const RowState& state, const QWidget* widget) const {
    const Theme& theme = Theme::of(widget);
    const RowAction& action = row.actions.at(place);
    const QRect hitArea = hitRect(area, action.kind);
    const bool isHovered = state.hoveredAction == place;
    const bool isPressed = state.pressedAction == place;
    const bool isCurrent = state.currentAction == place;
    switch (action.kind) {
    case RowAction::Kind::Trash: {
        const bool isLit = isHovered || isCurrent;
        if (isLit)
            Painting::fillRounded(painter, hitArea, Metrics::buttonRadius,
                                  isPressed ? theme.pressed : theme.hover);
        Symbol::paint(painter, u"trash"_s, area,
                      isLit || state.isSelected ? theme.destructive
                                                : withOpacity(theme.destructive, trashOpacity));
        break;
    }
    case RowAction::Kind::Spinner:
        Spinner::paint(painter, area, widget);
        break;
    case RowAction::Kind::Button:
        Painting::drawButton(
            painter, area, theme,
            {.isEnabled = action.isEnabled, .isHovered = isHovered, .isPressed = isPressed});
        drawText(painter, area, m_buttonFont,
                 action.isEnabled ? theme.text : withOpacity(theme.secondaryText, 0.6),
                 action.title, Qt::AlignHCenter);
        break;
    case RowAction::Kind::Badge:
        Painting::fillRounded(painter, area, badgeRadius, withOpacity(theme.good, badgeOpacity));
        drawText(painter, area, m_badgeFont, theme.goodOnTint, action.title, Qt::AlignHCenter);
        break;
    }
    if (isCurrent)
        Painting::drawFocusRing(painter, hitArea, Metrics::buttonRadius, theme);
}
