// SPDX-License-Identifier: MIT
#include "ListDriver.h"

#include "Find.h"
#include "Input.h"
#include "widgets/RowListView.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>

namespace {

/// Inside the row's text, beside its icon and far from its action.
QPoint onText(const QRect& rect) {
    constexpr int indent = 90;
    return {rect.left() + indent, rect.center().y()};
}

} // namespace

ListDriver::ListDriver(const QWidget& root) : m_view(require<RowListView>(root)) {}

bool ListDriver::isShown(const QWidget& root) {
    return findVisible<RowListView>(root) != nullptr;
}

QStringList ListDriver::texts() const {
    QStringList texts;
    for (int row = 0; row < m_view.model()->rowCount(); ++row)
        texts.append(m_view.model()->index(row, 0).data(Qt::AccessibleTextRole).toString());
    return texts;
}

QStringList ListDriver::ids() const {
    QStringList ids;
    for (int row = 0; row < m_view.model()->rowCount(); ++row)
        ids.append(m_view.rows().row(m_view.model()->index(row, 0)).id);
    return ids;
}

QModelIndex ListDriver::index(const QString& id) const {
    const QModelIndex index = m_view.rows().indexOf(id);
    if (!index.isValid())
        qFatal("There is no row \"%s\"", qUtf8Printable(id.left(100)));
    return index;
}

Row ListDriver::row(const QString& id) const {
    return m_view.rows().row(index(id));
}

RowState ListDriver::state(const QString& id) const {
    return index(id).data(RowModel::StateRole).value<RowState>();
}

QString ListDriver::currentId() const {
    return m_view.rows().row(m_view.currentIndex()).id;
}

QStringList ListDriver::selectedIds() const {
    QStringList selected;
    for (const QString& id : ids()) {
        if (!id.isEmpty() && state(id).isSelected)
            selected.append(id);
    }
    return selected;
}

QRect ListDriver::rect(const QString& id) const {
    m_view.scrollTo(index(id));
    return m_view.visualRect(index(id));
}

QRect ListDriver::actionRect(const QString& id, qsizetype action) const {
    m_view.scrollTo(index(id));
    return m_view.actionRect(index(id), action);
}

void ListDriver::click(const QString& id, Qt::MouseButton button) const {
    Input::click(*m_view.viewport(), onText(rect(id)), button);
}

void ListDriver::clickAction(const QString& id, qsizetype action, Qt::MouseButton button) const {
    Input::click(*m_view.viewport(), actionRect(id, action).center(), button);
}

void ListDriver::hover(const QString& id) const {
    Input::moveTo(*m_view.viewport(), onText(rect(id)));
}

QMenu& ListDriver::openMenu(const QString& id) const {
    const QPoint place = onText(rect(id));
    Input::click(*m_view.viewport(), place, Qt::RightButton);
    if (!QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; }))
        qFatal("No menu opens on \"%s\"", qUtf8Printable(id.left(100)));
    return *qobject_cast<QMenu*>(QApplication::activePopupWidget());
}
