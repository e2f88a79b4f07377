// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/Row.h"

#include <QFont>
#include <QStyledItemDelegate>

struct Theme;

/// Draws the rows of a RowListView and knows where their parts lie.
class RowDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// What the view knows of a row beyond its description.
    struct State final {
        bool isSelected{};
        bool isHovered{};
        bool isCurrent{};
        bool isActionHovered{};
        bool isActionPressed{};
        bool isActionCurrent{};
        /// The line below it separates it from another item.
        bool hasHairline{};
    };

    RowDelegate(int itemHeight, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

    /// Where the action of a row in `rect` is drawn.
    [[nodiscard]] QRect actionRect(const QRect& rect, const RowAction& action) const;
    /// Where a click counts as one on the action: more generous for small icons.
    [[nodiscard]] QRect actionHitRect(const QRect& rect, const RowAction& action) const;

private:
    void paintSection(QPainter* painter, const QRect& rect, const Row& row,
                      const Theme& theme) const;
    void paintTexts(QPainter* painter, QRect area, const Row& row, bool isSelected,
                    const Theme& theme) const;
    void paintTitleLine(QPainter* painter, const QRect& line, const Row& row,
                        const Theme& theme) const;
    void paintSubtitle(QPainter* painter, const QRect& line, const Row& row, bool isSelected,
                       const Theme& theme) const;
    void paintAction(QPainter* painter, const QRect& rect, const Row& row, const State& state,
                     const QWidget* widget) const;

    int m_itemHeight;
    QFont m_titleFont;
    QFont m_subtitleFont;
    QFont m_newVersionFont;
    QFont m_tagFont;
    QFont m_versionFont;
    QFont m_sectionFont;
    QFont m_buttonFont;
    QFont m_badgeFont;
};
