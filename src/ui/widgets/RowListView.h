// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/RowDelegate.h"
#include "widgets/RowModel.h"

#include <QBasicTimer>
#include <QListView>

#include <optional>

/// The list of every page that has one: rows with an action each, reached by mouse and keys.
///
/// The current row (arrow keys) and the selected row (what a page shows the details of) are
/// two things: arrows move the first, Return, Space or a click make it the second. Right and
/// Left step into the row's action and back; Delete runs a trash can's action.
class RowListView final : public QListView {
    Q_OBJECT

public:
    enum class Selectable { No, Yes };

    RowListView(int itemHeight, Selectable selectable, QWidget* parent = nullptr);

    /// Replaces the rows; the place in the list stays, and so does the current row if it is
    /// still there.
    void setRows(int count, RowModel::Describe describe);

    /// The same rows in a new state.
    void refreshRows() { m_model.refresh(); }

    /// Which row is drawn as selected, by id.
    void setSelectedId(const std::optional<QString>& id);

    [[nodiscard]] const RowModel& rows() const { return m_model; }

    [[nodiscard]] RowDelegate::State stateOf(const QModelIndex& index, const Row& row) const;
    /// Where a click runs the row's action, in viewport coordinates.
    [[nodiscard]] QRect actionRect(const QModelIndex& index) const;

Q_SIGNALS:
    /// The user chose a row.
    void rowChosen(const QString& id);
    /// The user asked for a row's action; `row` is its place in the list.
    void actionRequested(int row);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    void choose(const QModelIndex& index);
    void requestAction(const QModelIndex& index);
    void setHovered(const QPoint& position);
    [[nodiscard]] bool isOnAction(const QModelIndex& index, const QPoint& position) const;
    [[nodiscard]] bool isItem(const QModelIndex& index) const;
    [[nodiscard]] bool showsFocus() const;
    void showToolTip(const QPoint& globalPosition, const QPoint& position);

    RowModel m_model;
    RowDelegate m_delegate;
    Selectable m_selectable;
    std::optional<QString> m_selectedId;
    QString m_currentId;
    QPersistentModelIndex m_hovered;
    QPersistentModelIndex m_pressed;
    bool m_isHoveringAction{false};
    bool m_isActionPressed{false};
    bool m_isActionCurrent{false};
    /// The keyboard, not the mouse, was used last.
    bool m_isByKeyboard{false};
    /// Set by the delegate's drawing: some visible row shows a spinner.
    mutable bool m_hasSpinner{false};
    QBasicTimer m_spinnerTimer;
};
