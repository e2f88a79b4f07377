// SPDX-License-Identifier: MIT
#include "widgets/ListAccessible.h"

#include "widgets/Sheet.h"

QModelIndex ItemAccessible::index() const {
    return m_list->model()->index(m_row, 0);
}

bool ItemAccessible::isChoice() const {
    return index().flags().testFlag(Qt::ItemIsEnabled);
}

bool ItemAccessible::isCovered(const QListView* list) {
    return Sheet::openOver(list->window()) != nullptr;
}

QAccessibleInterface* ItemAccessible::parent() const {
    return QAccessible::queryAccessibleInterface(m_list);
}

QAccessibleInterface* ItemAccessible::child(int) const {
    return nullptr;
}

QAccessibleInterface* ItemAccessible::childAt(int x, int y) const {
    for (int place = 0; place < childCount(); ++place) {
        if (child(place)->rect().contains(x, y))
            return child(place);
    }
    return nullptr;
}

int ItemAccessible::childCount() const {
    return 0;
}

int ItemAccessible::indexOfChild(const QAccessibleInterface* child) const {
    for (int place = 0; place < childCount(); ++place) {
        if (this->child(place) == child)
            return place;
    }
    return -1;
}

QString ItemAccessible::text(QAccessible::Text kind) const {
    switch (kind) {
    case QAccessible::Name: {
        const QString name = index().data(Qt::AccessibleTextRole).toString();
        return name.isEmpty() ? index().data().toString() : name;
    }
    case QAccessible::Description:
        return index().data(Qt::AccessibleDescriptionRole).toString();
    default:
        return {};
    }
}

void ItemAccessible::setText(QAccessible::Text, const QString&) {}

QRect ItemAccessible::rect() const {
    const QRect area = m_list->visualRect(index());
    return {m_list->viewport()->mapToGlobal(area.topLeft()), area.size()};
}

QAccessible::Role ItemAccessible::role() const {
    return isChoice() ? QAccessible::ListItem : QAccessible::Heading;
}

QAccessible::State ItemAccessible::state() const {
    QAccessible::State state;
    state.invisible =
        !m_list->isVisible() || !m_list->visualRect(index()).intersects(m_list->viewport()->rect());
    state.disabled = !m_list->isEnabled();
    if (!isChoice())
        return state;
    state.focusable = true;
    state.focused = m_list->hasFocus() && m_list->currentIndex() == index();
    state.selectable = true;
    state.selected = m_list->selectionModel()->isSelected(index());
    return state;
}

void* ItemAccessible::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                : nullptr;
}

QStringList ItemAccessible::actionNames() const {
    return isChoice() ? QStringList{pressAction(), setFocusAction()} : QStringList();
}

void ItemAccessible::doAction(const QString& name) {
    // Later: what is pressed may be gone by the end of it, and this with it.
    const auto act = [list = m_list, index = QPersistentModelIndex(index()), name] {
        if (!index.isValid())
            return;
        // What is pressed behind a sheet is for those to decide who hear of a click.
        if (name == pressAction()) {
            Q_EMIT list->clicked(index);
        } else if (!isCovered(list)) {
            list->setCurrentIndex(index);
            list->setFocus(Qt::OtherFocusReason);
        }
    };
    if (actionNames().contains(name))
        QMetaObject::invokeMethod(m_list, act, Qt::QueuedConnection);
}

QStringList ItemAccessible::keyBindingsForAction(const QString&) const {
    return {};
}

ListAccessible::ListAccessible(QListView* list) : QAccessibleWidget(list, QAccessible::List) {
    const QAbstractItemModel* const model = list->model();
    const auto forget = [this] { forgetItems(); };
    QObject::connect(model, &QAbstractItemModel::modelAboutToBeReset, &m_context, forget);
    QObject::connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, &m_context, forget);
    QObject::connect(model, &QAbstractItemModel::rowsAboutToBeInserted, &m_context, forget);
}

ListAccessible::~ListAccessible() {
    forgetItems();
}

void ListAccessible::forgetItems() {
    const auto items = std::exchange(m_items, {});
    for (const QAccessible::Id id : items)
        QAccessible::deleteAccessibleInterface(id);
}

int ListAccessible::childCount() const {
    return list()->model()->rowCount();
}

QAccessibleInterface* ListAccessible::child(int row) const {
    if (row < 0 || row >= childCount())
        return nullptr;
    if (const auto known = m_items.constFind(row); known != m_items.cend())
        return QAccessible::accessibleInterface(*known);
    QAccessibleInterface* const item = makeItem(row);
    m_items.insert(row, QAccessible::registerAccessibleInterface(item));
    return item;
}

QAccessibleInterface* ListAccessible::makeItem(int row) const {
    return new ItemAccessible(list(), row);
}

int ListAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto* const item = dynamic_cast<const ItemAccessible*>(child);
    return item != nullptr && item->parent() == this ? item->row() : -1;
}

QAccessibleInterface* ListAccessible::childAt(int x, int y) const {
    return child(list()->indexAt(list()->viewport()->mapFromGlobal(QPoint(x, y))).row());
}

QAccessibleInterface* ListAccessible::focusChild() const {
    return list()->hasFocus() ? child(list()->currentIndex().row()) : nullptr;
}
