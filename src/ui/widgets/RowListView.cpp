// SPDX-License-Identifier: MIT
#include "widgets/RowListView.h"

#include "L10n.h"
#include "widgets/DisplayText.h"
#include "widgets/Spinner.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QScrollBar>
#include <QToolTip>

using namespace Qt::StringLiterals;

RowListView::RowListView(int itemHeight, Selectable selectable, QWidget* parent)
    : QListView(parent), m_delegate(itemHeight, nullptr), m_selectable(selectable) {
    setObjectName(u"rowList"_s);
    setModel(&m_model);
    setItemDelegate(&m_delegate);
    setFrameShape(NoFrame);
    setSelectionMode(NoSelection);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMouseTracking(true);
    viewport()->setBackgroundRole(QPalette::Window);
    constexpr int verticalMargin = 6;
    setViewportMargins(0, verticalMargin, 0, 0);
}

void RowListView::setRows(int count, RowModel::Describe describe) {
    // Not asked of the old description: what it describes may be gone by now.
    const QString currentId = std::exchange(m_currentId, {});
    const int position = verticalScrollBar()->value();
    m_model.reset(count, std::move(describe));
    if (const QModelIndex current = m_model.indexOf(currentId); current.isValid())
        selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    doItemsLayout();
    verticalScrollBar()->setValue(position);
}

void RowListView::setSelectedId(const std::optional<QString>& id) {
    if (m_selectedId == id)
        return;
    m_selectedId = id;
    viewport()->update();
}

RowDelegate::State RowListView::stateOf(const QModelIndex& index, const Row& row) const {
    const bool isHovered = index == m_hovered;
    const bool isCurrent = showsFocus() && index == currentIndex();
    const bool isSelected = m_selectedId == row.id;
    const int next = index.row() + 1;
    const bool nextIsItem = next < m_model.rowCount() && !m_model.isSection(next);
    const bool nextIsSelected =
        m_selectedId && nextIsItem && m_model.row(m_model.index(next)).id == *m_selectedId;
    if (row.action.kind == RowAction::Kind::Spinner)
        m_hasSpinner = true;
    return {
        .isSelected = isSelected,
        .isHovered = isHovered && m_selectable == Selectable::Yes,
        .isCurrent = isCurrent,
        .isActionHovered = isHovered && m_isHoveringAction && row.action.canRun(),
        .isActionPressed = index == m_pressed && m_isActionPressed,
        .isActionCurrent = isCurrent && m_isActionCurrent && row.action.canRun(),
        .hasHairline = nextIsItem && !isSelected && !nextIsSelected,
    };
}

QRect RowListView::actionRect(const QModelIndex& index) const {
    return m_delegate.actionHitRect(visualRect(index), m_model.row(index).action);
}

bool RowListView::isItem(const QModelIndex& index) const {
    return index.isValid() && !m_model.isSection(index.row());
}

bool RowListView::showsFocus() const {
    return hasFocus() && m_isByKeyboard;
}

bool RowListView::isOnAction(const QModelIndex& index, const QPoint& position) const {
    return isItem(index) && actionRect(index).contains(position);
}

void RowListView::choose(const QModelIndex& index) {
    if (m_selectable == Selectable::Yes && isItem(index))
        Q_EMIT rowChosen(m_model.row(index).id);
}

void RowListView::requestAction(const QModelIndex& index) {
    if (isItem(index) && m_model.row(index).action.canRun())
        Q_EMIT actionRequested(index.row());
}

void RowListView::keyPressEvent(QKeyEvent* event) {
    const QModelIndex current = currentIndex();
    m_isByKeyboard = true;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (m_isActionCurrent)
            requestAction(current);
        else
            choose(current);
        return;
    case Qt::Key_Right:
    case Qt::Key_Left:
        m_isActionCurrent = event->key() == Qt::Key_Right && isItem(current) &&
                            m_model.row(current).action.canRun();
        viewport()->update();
        return;
    case Qt::Key_Delete:
        if (isItem(current) && m_model.row(current).action.kind == RowAction::Kind::Trash)
            requestAction(current);
        return;
    default:
        QListView::keyPressEvent(event);
    }
}

void RowListView::mousePressEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !isItem(index))
        return;
    m_isByKeyboard = false;
    m_pressed = index;
    m_isActionPressed = isOnAction(index, event->position().toPoint());
    m_isActionCurrent = false;
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    viewport()->update();
}

void RowListView::mouseMoveEvent(QMouseEvent* event) {
    setHovered(event->position().toPoint());
}

void RowListView::mouseReleaseEvent(QMouseEvent* event) {
    const QPoint position = event->position().toPoint();
    const QModelIndex released = indexAt(position);
    const QModelIndex pressed = m_pressed;
    const bool wasOnAction = std::exchange(m_isActionPressed, false);
    m_pressed = QPersistentModelIndex();
    viewport()->update();
    if (event->button() != Qt::LeftButton || !pressed.isValid() || released != pressed)
        return;
    if (wasOnAction != isOnAction(released, position))
        return;
    if (wasOnAction)
        requestAction(pressed);
    else
        choose(pressed);
}

void RowListView::setHovered(const QPoint& position) {
    const QModelIndex index = indexAt(position);
    const QPersistentModelIndex hovered = isItem(index) ? index : QModelIndex();
    const bool onAction = isOnAction(index, position);
    if (hovered == m_hovered && onAction == m_isHoveringAction)
        return;
    m_hovered = hovered;
    m_isHoveringAction = onAction;
    viewport()->update();
}

void RowListView::contextMenuEvent(QContextMenuEvent* event) {
    const bool fromKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex index = fromKeyboard ? currentIndex() : indexAt(event->pos());
    if (!isItem(index))
        return;
    const Row row = m_model.row(index);
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // The rows may be others by the time the user has made up their mind.
    if (m_selectable == Selectable::Yes)
        menu->addAction(DisplayText::label(L10n::details()), this,
                        [this, id = row.id] { choose(m_model.indexOf(id)); });
    if (row.action.canRun())
        menu->addAction(DisplayText::label(row.action.title), this,
                        [this, id = row.id] { requestAction(m_model.indexOf(id)); });
    if (menu->isEmpty()) {
        delete menu;
        return;
    }
    menu->popup(fromKeyboard ? viewport()->mapToGlobal(visualRect(index).center())
                             : event->globalPos());
}

void RowListView::focusInEvent(QFocusEvent* event) {
    m_isByKeyboard = event->reason() != Qt::MouseFocusReason;
    // Coming in by keyboard there has to be a row that the arrows start from.
    if (!currentIndex().isValid()) {
        for (int row = 0; row < m_model.rowCount(); ++row) {
            if (!m_model.isSection(row)) {
                selectionModel()->setCurrentIndex(m_model.index(row),
                                                  QItemSelectionModel::NoUpdate);
                break;
            }
        }
    }
    QListView::focusInEvent(event);
}

void RowListView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    m_isActionCurrent = false;
    m_currentId = current.isValid() ? m_model.row(current).id : QString();
    QListView::currentChanged(current, previous);
    viewport()->update();
}

QModelIndex RowListView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    // Home and Page Up may end at a heading, which can't be the current row.
    QModelIndex index = QListView::moveCursor(action, modifiers);
    while (m_model.isSection(index.row()))
        index = m_model.index(index.row() + 1);
    return index;
}

bool RowListView::viewportEvent(QEvent* event) {
    switch (event->type()) {
    case QEvent::Leave:
        setHovered(QPoint(-1, -1));
        break;
    case QEvent::ToolTip: {
        const auto* help = static_cast<QHelpEvent*>(event);
        showToolTip(help->globalPos(), help->pos());
        return true;
    }
    default:
        break;
    }
    return QListView::viewportEvent(event);
}

void RowListView::showToolTip(const QPoint& globalPosition, const QPoint& position) {
    const QModelIndex index = indexAt(position);
    if (!isItem(index)) {
        QToolTip::hideText();
        return;
    }
    const Row row = m_model.row(index);
    const QString text = isOnAction(index, position) ? row.action.toolTip : row.subtitle;
    QToolTip::showText(globalPosition, DisplayText::toolTip(text), viewport(), visualRect(index));
}

void RowListView::paintEvent(QPaintEvent* event) {
    // A partial repaint may leave out the row that has one.
    if (event->rect().contains(viewport()->rect()))
        m_hasSpinner = false;
    QListView::paintEvent(event);
    if (m_hasSpinner && !m_spinnerTimer.isActive())
        m_spinnerTimer.start(Spinner::interval, this);
}

void RowListView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_spinnerTimer.timerId()) {
        QListView::timerEvent(event);
        return;
    }
    if (m_hasSpinner && isVisible())
        viewport()->update();
    else
        m_spinnerTimer.stop();
}
