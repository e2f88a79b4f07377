// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/RowDelegate.h"
#include "widgets/RowModel.h"

#include <QBasicTimer>
#include <QListView>

class SearchField;

/// The list of every page that has one: rows with actions, reached by mouse and keys.
///
/// The current row (arrow keys) and the selected row (what a page shows the details of) are
/// two things: arrows move the first, Return, Space or a click make it the second. Right and
/// Left step through the row's actions and back; Delete triggers a trash can.
class RowListView final : public QListView {
    Q_OBJECT

public:
    enum class Selectable { No, Yes };

    RowListView(int itemHeight, Selectable selectable, QWidget* parent = nullptr);

    /// Shows the rows of the sections that aren't empty, and those that are there in their new
    /// state. The place in the list stays, and so does the current row; if it is gone, the next
    /// one that is left becomes the current one, else the last.
    void setRows(QList<RowSection> sections);

    /// Which row is drawn as selected, by id.
    void setSelectedId(const std::optional<QString>& id);

    [[nodiscard]] const RowModel& rows() const { return m_model; }

    /// Tells what else can be done with a row, by id, for its menu. Asked when that is opened.
    using FurtherActions = std::function<QList<RowAction>(const QString& id)>;

    void setFurtherActions(FurtherActions furtherActions);

    /// What is typed while the list has the focus goes there, unless it is hidden. Lives as long.
    void setSearchField(SearchField* field) { m_searchField = field; }

    /// Where a click triggers one of the row's actions, in viewport coordinates.
    [[nodiscard]] QRect actionRect(const QModelIndex& index, qsizetype action = 0) const;

    /// So much of the list, from below, is covered by something else: no row is shown there, and
    /// the current one is scrolled out of it.
    void setCoveredHeight(int height);

    /// Where a tag of the row is, in viewport coordinates.
    [[nodiscard]] QRect tagRect(const QModelIndex& index, qsizetype tag = 0) const;

    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    void keyboardSearch(const QString& search) override;

Q_SIGNALS:
    /// The user chose a row.
    void rowChosen(const QString& id);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    friend class RowListAccessible;

    /// A row, or one of its actions.
    struct Target final {
        QPersistentModelIndex row{};
        std::optional<qsizetype> action{};

        bool operator==(const Target&) const = default;
    };

    [[nodiscard]] Target targetAt(const QPoint& position) const;
    /// Makes it the current row without scrolling to it.
    void setCurrentInPlace(const QModelIndex& index);
    void activate(const Target& target);
    void setHovered(const Target& target);
    void stepThroughActions(Qt::Key key);
    void triggerTrash();
    [[nodiscard]] QList<RowAction> menuActions(const Row& row) const;
    void openMenu(const QModelIndex& index, const QPoint& globalPosition);
    /// In the middle of the current row.
    void openMenuByKeyboard();
    /// Triggers the action with that title of the row with that id, if they are still there.
    void trigger(const QString& id, const QString& title);
    void showToolTip(const QPoint& globalPosition, const QPoint& position);
    [[nodiscard]] RowState stateOf(const QModelIndex& index) const;
    [[nodiscard]] bool isSelected(const QModelIndex& index) const;
    void updateRow(const QModelIndex& index);
    void updateSelected();
    [[nodiscard]] QModelIndexList indexesInSight() const;
    /// Where some are to be seen.
    [[nodiscard]] QRegion spinners() const;
    void tellFocus();

    RowModel m_model;
    RowDelegate m_delegate;
    Selectable m_selectable;
    FurtherActions m_furtherActions;
    SearchField* m_searchField{nullptr};
    std::optional<QString> m_selectedId;
    Target m_hovered;
    Target m_pressed;
    /// Of the current row.
    std::optional<qsizetype> m_currentAction;
    QBasicTimer m_spinnerTimer;
};
