// SPDX-License-Identifier: MIT
#include "SidebarDriver.h"

#include "Find.h"
#include "Input.h"
#include "shell/SidebarDelegate.h"

#include <QListView>

using namespace Qt::StringLiterals;

SidebarDriver::SidebarDriver(const QWidget& root)
    : m_view(require<QListView>(root, u"sidebar"_s)) {}

QStringList SidebarDriver::titles() const {
    QStringList titles;
    for (int row = 0; row < m_view.model()->rowCount(); ++row) {
        const QModelIndex index = m_view.model()->index(row, 0);
        const bool isSection = !index.flags().testFlag(Qt::ItemIsSelectable);
        titles.append(index.data().toString() + (isSection ? u":"_s : QString()));
    }
    return titles;
}

QModelIndex SidebarDriver::index(SidebarCategory category) const {
    const QModelIndexList found =
        m_view.model()->match(m_view.model()->index(0, 0), SidebarDelegate::CategoryRole,
                              static_cast<int>(category), 1, Qt::MatchExactly);
    if (found.isEmpty())
        qFatal("The sidebar has no row for %s", qUtf8Printable(rawValue(category)));
    return found.constFirst();
}

QString SidebarDriver::badge(SidebarCategory category) const {
    return index(category).data(SidebarDelegate::BadgeRole).toString();
}

bool SidebarDriver::isPill(SidebarCategory category) const {
    return index(category).data(SidebarDelegate::IsPillRole).toBool();
}

QString SidebarDriver::symbol(SidebarCategory category) const {
    return index(category).data(SidebarDelegate::SymbolRole).toString();
}

QString SidebarDriver::selected() const {
    const QModelIndexList selected = m_view.selectionModel()->selectedIndexes();
    return selected.isEmpty() ? QString() : selected.constFirst().data().toString();
}

QRect SidebarDriver::rect(SidebarCategory category) const {
    return m_view.visualRect(index(category));
}

void SidebarDriver::click(SidebarCategory category) const {
    Input::click(*m_view.viewport(), rect(category).center());
}
