// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/Row.h"

#include <QStringList>

class QMenu;
class QModelIndex;
class QRect;
class QWidget;
class RowListView;

/// A list of rows as its user sees and handles it. Rows are named by their identifiers.
class ListDriver final {
public:
    /// The list that is visible below `root`.
    explicit ListDriver(const QWidget& root);

    [[nodiscard]] static bool isShown(const QWidget& root);

    /// What each row says to a screen reader, headings included.
    [[nodiscard]] QStringList texts() const;
    [[nodiscard]] QStringList ids() const;
    [[nodiscard]] Row row(const QString& id) const;
    /// How the row is drawn at this moment.
    [[nodiscard]] RowState state(const QString& id) const;
    /// The identifier of the row that the arrow keys have come to.
    [[nodiscard]] QString currentId() const;
    /// The identifiers of the rows drawn as selected.
    [[nodiscard]] QStringList selectedIds() const;

    /// Clicks on a row, far from its action.
    void click(const QString& id, Qt::MouseButton button = Qt::LeftButton) const;
    void clickAction(const QString& id, qsizetype action = 0,
                     Qt::MouseButton button = Qt::LeftButton) const;
    void hover(const QString& id) const;
    /// Opens the row's menu by the right mouse button and waits for it.
    [[nodiscard]] QMenu& openMenu(const QString& id) const;

    /// The row's place in the viewport, scrolled to if need be.
    [[nodiscard]] QRect rect(const QString& id) const;
    [[nodiscard]] QRect actionRect(const QString& id, qsizetype action = 0) const;

    [[nodiscard]] RowListView& view() const { return m_view; }

private:
    [[nodiscard]] QModelIndex index(const QString& id) const;

    RowListView& m_view;
};
