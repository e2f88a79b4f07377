// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/Row.h"

#include <QFont>
#include <QStyledItemDelegate>

struct Theme;

/// Draws the rows of a RowModel and knows where their parts lie.
class RowDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    RowDelegate(int itemHeight, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

    /// What is drawn as the row: less than the list's width.
    [[nodiscard]] static QRect rowRect(const QRect& rect);

    /// Where a click counts as one on each of the row's actions: more generous than what is
    /// drawn for small icons.
    [[nodiscard]] QList<QRect> hitRects(const QRect& rect, const Row& row) const;

    /// Where the row's tags are, for a pointer that asks.
    [[nodiscard]] QList<QRect> tagRects(const QRect& rect, const Row& row) const;

    /// The texts of the row that are cut because there is no room for them in `rect`.
    [[nodiscard]] QStringList cutTexts(const QRect& rect, const Row& row) const;

private:
    /// Where a row's texts have room.
    struct Room final {
        QRect texts;
        QRect version;
    };

    [[nodiscard]] Room roomIn(const QRect& rect, const Row& row) const;
    [[nodiscard]] int widthOf(const RowTag& tag) const;
    [[nodiscard]] int roomForTags(const Row& row) const;
    /// In a line, behind a title that ends at `x`.
    [[nodiscard]] QList<QRect> tagsBehind(int x, const QRect& line, const Row& row) const;
    [[nodiscard]] QSize sizeOf(const RowAction& action) const;
    [[nodiscard]] QList<QRect> actionRects(const QRect& rect, const Row& row) const;
    void paintHeading(QPainter* painter, const QRect& rect, const QString& title,
                      const Theme& theme) const;
    void paintTexts(QPainter* painter, QRect area, const Row& row, bool isSelected,
                    const Theme& theme) const;
    void paintTitleLine(QPainter* painter, const QRect& line, const Row& row,
                        const Theme& theme) const;
    void paintSubtitle(QPainter* painter, const QRect& line, const Row& row, bool isSelected,
                       const Theme& theme) const;
    void paintAction(QPainter* painter, const QRect& area, const Row& row, qsizetype place,
                     const RowState& state, const QWidget* widget) const;

    int m_itemHeight;
    QFont m_titleFont;
    QFont m_subtitleFont;
    QFont m_newVersionFont;
    QFont m_tagFont;
    QFont m_versionFont;
    QFont m_headingFont;
    QFont m_buttonFont;
    QFont m_badgeFont;
};
