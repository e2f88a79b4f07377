// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QStyledItemDelegate>

struct Theme;

/// Draws the sidebar's section titles and categories.
class SidebarDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    enum Role {
        /// A SidebarCategory as int; a section title has none.
        CategoryRole = Qt::UserRole,
        SymbolRole,
        /// The count's text, empty for none.
        BadgeRole,
        /// Whether the count stands out on a coloured pill.
        IsPillRole,
    };

    explicit SidebarDelegate(QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

    /// Tells the whole title where it is cut.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    /// Where the title has room beside icon and count.
    [[nodiscard]] QRect titleRect(const QRect& rect, const QModelIndex& index) const;
    /// Where the count lies at the trailing end of `area`; invalid where there is none.
    [[nodiscard]] QRect badgeRect(const QRect& area, const QModelIndex& index) const;
    void paintBadge(QPainter* painter, const QRect& box, const QModelIndex& index, bool isSelected,
                    const Theme& theme) const;

    QFont m_sectionFont;
    QFont m_titleFont;
    QFont m_badgeFont;
    QFont m_pillFont;
};
