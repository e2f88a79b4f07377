// SPDX-License-Identifier: MIT
#include "widgets/RowModel.h"

#include "widgets/DisplayText.h"

void RowModel::reset(int count, Describe describe) {
    beginResetModel();
    m_count = count;
    m_describe = std::move(describe);
    endResetModel();
}

void RowModel::refresh() {
    if (m_count > 0)
        Q_EMIT dataChanged(index(0), index(m_count - 1));
}

Row RowModel::row(const QModelIndex& index) const {
    return m_describe(index.row());
}

bool RowModel::isSection(int row) const {
    return row >= 0 && row < m_count && m_describe(row).kind == Row::Kind::Section;
}

QModelIndex RowModel::indexOf(const QString& id) const {
    if (id.isEmpty())
        return {};
    for (int row = 0; row < m_count; ++row) {
        if (m_describe(row).id == id)
            return index(row);
    }
    return {};
}

int RowModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_count;
}

QVariant RowModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return DisplayText::line(row(index).title);
    case Qt::AccessibleTextRole:
        return row(index).accessibleText();
    default:
        return {};
    }
}

Qt::ItemFlags RowModel::flags(const QModelIndex& index) const {
    // Headings are read but never become the current row.
    if (!index.isValid() || isSection(index.row()))
        return Qt::ItemNeverHasChildren;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}
