// SPDX-License-Identifier: MIT
#include "widgets/RowListView.h"

#include "L10n.h"
#include "style/Painting.h"
#include "widgets/Accessible.h"
#include "widgets/DisplayText.h"
#include "widgets/SearchField.h"
#include "widgets/Spinner.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

QModelIndex firstRowFrom(QModelIndex index) {
    while (index.isValid() && !RowModel::isRow(index))
        index = index.siblingAtRow(index.row() + 1);
    return index;
}

} // namespace

RowListView::RowListView(int itemHeight, Selectable selectable, QWidget* parent)
    : QListView(parent),
      m_model([this](const QModelIndex& index) { return stateOf(index); }),
      m_delegate(itemHeight, nullptr),
      m_selectable(selectable) {
    Accessible::setRole(this, QAccessible::List);
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
    setCoveredHeight(0);
}

void RowListView::setCoveredHeight(int height) {
    constexpr int topMargin = 6;
    const QMargins margins(0, topMargin, 0, height);
    if (margins == viewportMargins())
        return;
    const bool isInSight = hasFocus() && viewport()->rect().contains(visualRect(currentIndex()));
    setViewportMargins(margins);
    if (isInSight)
        scrollTo(currentIndex());
}

void RowListView::setRows(QList<RowSection> sections) {
    sections.removeIf([](const RowSection& section) { return section.count == 0; });
    if (m_model.hasRowsOf(sections)) {
        // Were the model to say that its rows have changed, the view would go through all of them.
        viewport()->update();
        return;
    }
    const QString currentId = m_model.row(currentIndex()).id;
    const std::optional<qsizetype> currentAction = m_currentAction;
    const int position = verticalScrollBar()->value();
    const bool isInSight = hasFocus() && viewport()->rect().contains(visualRect(currentIndex()));
    const QModelIndex current = m_model.reset(std::move(sections), currentIndex());
    setUniformItemSizes(!m_model.hasHeadings());
    setCurrentInPlace(current);
    if (m_model.row(current).id == currentId)
        m_currentAction = currentAction;
    doItemsLayout();
    verticalScrollBar()->setValue(position);
    // The keyboard is there. Rows that come back before it would push it out.
    if (isInSight)
        scrollTo(current);
}

void RowListView::setCurrentInPlace(const QModelIndex& index) {
    setAutoScroll(false);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    setAutoScroll(true);
}

void RowListView::setSelectedId(const std::optional<QString>& id) {
    if (m_selectedId == id)
        return;
    updateSelected();
    const std::optional<QString> before = std::exchange(m_selectedId, id);
    updateSelected();
    if (!QAccessible::isActive())
        return;
    const auto tell = [this](const std::optional<QString>& of, QAccessible::Event type) {
        const int row = of ? m_model.indexOf(*of).row() : -1;
        // Without a row it would be told of the list.
        if (row < 0)
            return;
        QAccessibleEvent event(this, type);
        event.setChild(row);
        QAccessible::updateAccessibility(&event);
    };
    tell(before, QAccessible::SelectionRemove);
    tell(id, QAccessible::Selection);
}

void RowListView::setFurtherActions(FurtherActions furtherActions) {
    m_furtherActions = std::move(furtherActions);
}

bool RowListView::isSelected(const QModelIndex& index) const {
    return m_selectedId && RowModel::isRow(index) && m_model.row(index).id == *m_selectedId;
}

void RowListView::updateRow(const QModelIndex& index) {
    // An edge that lies within a pixel of the display, as at 125 %, is painted with both sides.
    if (index.isValid())
        viewport()->update(visualRect(index).adjusted(0, -1, 0, 1));
}

/// Paints the selected row anew, and the one above for the line between them.
void RowListView::updateSelected() {
    for (const QModelIndex& index : indexesInSight()) {
        if (isSelected(index) || isSelected(index.siblingAtRow(index.row() + 1)))
            updateRow(index);
    }
}

RowState RowListView::stateOf(const QModelIndex& index) const {
    const auto actionOf = [this, &index](const Target& target) {
        const bool isLit = target.row == index && target.action &&
                           m_model.row(index).actions.value(*target.action).canTrigger();
        return isLit ? target.action : std::nullopt;
    };
    const bool isCurrent = Painting::showsFocus(this) && index == currentIndex();
    const QModelIndex next = index.siblingAtRow(index.row() + 1);
    return {
        .isSelected = isSelected(index),
        .isHovered = m_hovered.row == index && m_selectable == Selectable::Yes,
        .isCurrent = isCurrent,
        .hasHairline = RowModel::isRow(next) && !isSelected(index) && !isSelected(next),
        .hoveredAction = actionOf(m_hovered),
        .pressedAction = actionOf(m_pressed),
        .currentAction = isCurrent ? actionOf({index, m_currentAction}) : std::nullopt,
    };
}

QRect RowListView::actionRect(const QModelIndex& index, qsizetype action) const {
    return m_delegate.hitRects(visualRect(index), m_model.row(index)).value(action);
}

QRect RowListView::tagRect(const QModelIndex& index, qsizetype tag) const {
    return m_delegate.tagRects(visualRect(index), m_model.row(index)).value(tag);
}

RowListView::Target RowListView::targetAt(const QPoint& position) const {
    const QModelIndex index = indexAt(position);
    if (!RowModel::isRow(index) || !RowDelegate::rowRect(visualRect(index)).contains(position))
        return {};
    const Row row = m_model.row(index);
    const QList<QRect> areas = m_delegate.hitRects(visualRect(index), row);
    for (qsizetype i = 0; i < areas.size(); ++i) {
        // A badge is as good a place of the row as any other.
        if (areas.at(i).contains(position) && row.actions.at(i).kind != RowAction::Kind::Badge)
            return {index, i};
    }
    return {index, std::nullopt};
}

void RowListView::activate(const Target& target) {
    if (!target.row.isValid())
        return;
    // A copy: what is triggered may replace the rows.
    const Row row = m_model.row(target.row);
    if (target.action)
        row.actions.value(*target.action).trigger();
    else if (m_selectable == Selectable::Yes)
        Q_EMIT rowChosen(row.id);
}

void RowListView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        activate({currentIndex(), m_currentAction});
        return;
    case Qt::Key_Right:
    case Qt::Key_Left:
        stepThroughActions(Qt::Key(event->key()));
        return;
    case Qt::Key_Delete:
#ifdef Q_OS_MACOS
    // The key that is called Delete there.
    case Qt::Key_Backspace:
#endif
        triggerTrash();
        return;
    case Qt::Key_F10:
        // The toolkit only knows the menu key, which many keyboards lack.
        if (event->modifiers() == Qt::ShiftModifier)
            openMenuByKeyboard();
        else
            event->ignore();
        return;
    case Qt::Key_Escape:
        // Not a letter to look for.
        event->ignore();
        return;
    default:
        QListView::keyPressEvent(event);
    }
}

void RowListView::keyboardSearch(const QString& search) {
    if (m_searchField == nullptr || !m_searchField->isVisible()) {
        QListView::keyboardSearch(search);
    } else {
        m_searchField->setFocus(Qt::OtherFocusReason);
        m_searchField->end(false);
        m_searchField->insert(search);
    }
}

void RowListView::stepThroughActions(Qt::Key key) {
    const QList<RowAction> actions = m_model.row(currentIndex()).actions;
    const qsizetype step = key == Qt::Key_Right ? 1 : -1;
    qsizetype place = m_currentAction.value_or(-1) + step;
    while (place >= 0 && place < actions.size() && !actions.at(place).canTrigger())
        place += step;
    if (place < 0)
        m_currentAction.reset();
    else if (place < actions.size())
        m_currentAction = place;
    updateRow(currentIndex());
    tellFocus();
}

void RowListView::tellFocus() {
    if (!QAccessible::isActive())
        return;
    QAccessibleInterface* const self = QAccessible::queryAccessibleInterface(this);
    if (QAccessibleInterface* const focused = self->focusChild()) {
        QAccessibleEvent event(focused, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

void RowListView::triggerTrash() {
    const Row row = m_model.row(currentIndex());
    const auto trash = std::ranges::find(row.actions, RowAction::Kind::Trash, &RowAction::kind);
    if (trash != row.actions.end())
        trash->trigger();
}

void RowListView::trigger(const QString& id, const QString& title) {
    const QModelIndex index = m_model.indexOf(id);
    if (!index.isValid())
        return;
    const QList<RowAction> actions = menuActions(m_model.row(index));
    const auto action = std::ranges::find(actions, title, &RowAction::title);
    if (action != actions.end())
        action->trigger();
}

QList<RowAction> RowListView::menuActions(const Row& row) const {
    QList<RowAction> actions = m_furtherActions ? m_furtherActions(row.id) : QList<RowAction>();
    actions += row.actions;
    actions.removeIf([](const RowAction& action) { return !action.canTrigger(); });
    return actions;
}

void RowListView::mousePressEvent(QMouseEvent* event) {
    const Target target = targetAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !target.row.isValid())
        return;
    m_pressed = target;
    m_currentAction.reset();
    // What was pressed stays below the pointer until it is released.
    setCurrentInPlace(target.row);
    updateRow(target.row);
}

void RowListView::mouseMoveEvent(QMouseEvent* event) {
    setHovered(targetAt(event->position().toPoint()));
}

void RowListView::mouseReleaseEvent(QMouseEvent* event) {
    const Target pressed = std::exchange(m_pressed, {});
    updateRow(pressed.row);
    if (event->button() == Qt::LeftButton && pressed == targetAt(event->position().toPoint()))
        activate(pressed);
}

void RowListView::setHovered(const Target& target) {
    if (target == m_hovered)
        return;
    updateRow(m_hovered.row);
    m_hovered = target;
    updateRow(m_hovered.row);
}

void RowListView::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard) {
        openMenuByKeyboard();
        return;
    }
    const QModelIndex index = targetAt(event->pos()).row;
    if (!index.isValid())
        return;
    m_currentAction.reset();
    setCurrentInPlace(index);
    openMenu(index, event->globalPos());
}

void RowListView::openMenuByKeyboard() {
    const QModelIndex index = currentIndex();
    if (!index.isValid())
        return;
    scrollTo(index);
    openMenu(index, viewport()->mapToGlobal(visualRect(index).center()));
}

void RowListView::openMenu(const QModelIndex& index, const QPoint& globalPosition) {
    const Row row = m_model.row(index);
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setAccessibleName(DisplayText::line(row.title));
    // The rows may be others by the time the user has made up their mind.
    if (m_selectable == Selectable::Yes)
        menu->addAction(DisplayText::label(L10n::details()), this, [this, id = row.id] {
            activate({m_model.indexOf(id), std::nullopt});
        });
    for (const RowAction& action : menuActions(row))
        menu->addAction(DisplayText::label(action.title), this,
                        [this, id = row.id, title = action.title] { trigger(id, title); });
    if (menu->isEmpty()) {
        delete menu;
        return;
    }
    menu->popup(globalPosition);
}

void RowListView::focusInEvent(QFocusEvent* event) {
    // There has to be a row that the arrows start from: the first one in sight.
    if (!currentIndex().isValid())
        setCurrentInPlace(firstRowFrom(indexAt({0, 0})));
    QListView::focusInEvent(event);
    // The toolkit tells of the list itself, but not before this has returned.
    QMetaObject::invokeMethod(this, &RowListView::tellFocus, Qt::QueuedConnection);
}

void RowListView::focusOutEvent(QFocusEvent*) {
    // The toolkit would paint all rows anew, but the current one alone shows who has the focus.
    updateRow(currentIndex());
}

void RowListView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    m_currentAction.reset();
    QListView::currentChanged(current, previous);
    updateRow(previous);
    updateRow(current);
}

QModelIndex RowListView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    // Home and Page Up may end at a heading, which can't be the current row.
    return firstRowFrom(QListView::moveCursor(action, modifiers));
}

void RowListView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    // The first row of a section is seen with its heading.
    const QModelIndex above = index.siblingAtRow(index.row() - 1);
    if (above.isValid() && !RowModel::isRow(above))
        QListView::scrollTo(above, hint);
    QListView::scrollTo(index, hint);
}

bool RowListView::viewportEvent(QEvent* event) {
    switch (event->type()) {
    case QEvent::Leave:
        setHovered({});
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
    const Target target = targetAt(position);
    const Row row = m_model.row(target.row);
    const QRect area = visualRect(target.row);
    const QList<QRect> tags = m_delegate.tagRects(area, row);
    for (qsizetype i = 0; i < tags.size(); ++i) {
        if (tags.at(i).contains(position) && row.tags.at(i).explain) {
            const QString explanation = row.tags.at(i).explanation();
            QToolTip::showText(globalPosition, DisplayText::toolTip(explanation), viewport(),
                               tags.at(i));
            return;
        }
    }
    // What can be read in the row needn't be said again.
    const QString text = target.action ? row.actions.value(*target.action).toolTip
                                       : m_delegate.cutTexts(area, row).join(u", "_s);
    QToolTip::showText(globalPosition, DisplayText::toolTip(text), viewport(), area);
}

QModelIndexList RowListView::indexesInSight() const {
    QModelIndexList indexes;
    const QRect area = viewport()->rect();
    for (QModelIndex index = indexAt(area.topLeft());
         index.isValid() && visualRect(index).top() <= area.bottom();
         index = index.siblingAtRow(index.row() + 1))
        indexes.append(index);
    return indexes;
}

QRegion RowListView::spinners() const {
    QRegion spinners;
    for (const QModelIndex& index : indexesInSight()) {
        const QList<RowAction> actions = m_model.row(index).actions;
        for (qsizetype i = 0; i < actions.size(); ++i) {
            if (actions.at(i).kind == RowAction::Kind::Spinner)
                spinners += actionRect(index, i);
        }
    }
    return spinners;
}

void RowListView::paintEvent(QPaintEvent* event) {
    QListView::paintEvent(event);
    if (!m_spinnerTimer.isActive() && !spinners().isEmpty())
        m_spinnerTimer.start(Spinner::interval(this), this);
}

void RowListView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_spinnerTimer.timerId()) {
        QListView::timerEvent(event);
    } else {
        m_spinnerTimer.stop();
        // Those that are painted go on.
        viewport()->update(spinners());
    }
}
