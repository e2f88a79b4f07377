// SPDX-License-Identifier: MIT
#include "widgets/RowModel.h"

#include "widgets/DisplayText.h"

#include <algorithm>

namespace {

int headingsOf(const RowSection& section) {
    return section.heading.isEmpty() ? 0 : 1;
}

} // namespace

RowModel::RowModel(DescribeState describeState) : m_describeState(std::move(describeState)) {}

bool RowModel::hasRowsOf(const QList<RowSection>& sections) const {
    return std::ranges::equal(sections, m_sections, {}, &RowSection::records, &RowSection::records);
}

void RowModel::reset(QList<RowSection> sections) {
    beginResetModel();
    m_sections = std::move(sections);
    m_count = 0;
    for (const RowSection& section : m_sections)
        m_count += headingsOf(section) + section.count;
    endResetModel();
}

RowModel::Position RowModel::positionOf(int row) const {
    auto section = m_sections.cbegin();
    for (; row >= headingsOf(*section) + section->count; ++section)
        row -= headingsOf(*section) + section->count;
    return {*section, row - headingsOf(*section)};
}

bool RowModel::hasHeadings() const {
    return std::ranges::any_of(m_sections, headingsOf);
}

Row RowModel::row(const QModelIndex& index) const {
    if (!index.isValid())
        return {};
    const auto [section, place] = positionOf(index.row());
    return place < 0 ? Row{.title = section.heading} : section.describe(place);
}

QModelIndex RowModel::indexOf(const QString& id) const {
    for (int row = 0; row < m_count && !id.isEmpty(); ++row) {
        if (this->row(index(row)).id == id)
            return index(row);
    }
    return {};
}

bool RowModel::isRow(const QModelIndex& index) {
    return index.flags().testFlag(Qt::ItemIsEnabled);
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
    case DescriptionRole:
        return QVariant::fromValue(row(index));
    case StateRole:
        return QVariant::fromValue(m_describeState(index));
    default:
        return {};
    }
}

Qt::ItemFlags RowModel::flags(const QModelIndex& index) const {
    // Headings are read but never become the current row.
    if (!index.isValid() || positionOf(index.row()).place < 0)
        return Qt::ItemNeverHasChildren;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}
