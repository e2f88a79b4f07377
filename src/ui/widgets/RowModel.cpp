// SPDX-License-Identifier: MIT
#include "widgets/RowModel.h"

#include "widgets/DisplayText.h"

#include <QHash>

#include <algorithm>

namespace {

/// A section, and a place in it: -1 is the heading's.
struct Position final {
    const RowSection& section;
    int place;
};

int headingsOf(const RowSection& section) {
    return section.heading.isEmpty() ? 0 : 1;
}

int countIn(const QList<RowSection>& sections) {
    int count = 0;
    for (const RowSection& section : sections)
        count += headingsOf(section) + section.count;
    return count;
}

Position positionIn(const QList<RowSection>& sections, int row) {
    auto section = sections.cbegin();
    for (; row >= headingsOf(*section) + section->count; ++section)
        row -= headingsOf(*section) + section->count;
    return {*section, row - headingsOf(*section)};
}

Row rowIn(const QList<RowSection>& sections, int row) {
    const auto [section, place] = positionIn(sections, row);
    return place < 0 ? Row{.title = section.heading} : section.describe(place);
}

} // namespace

RowModel::RowModel(DescribeState describeState) : m_describeState(std::move(describeState)) {}

bool RowModel::hasRowsOf(const QList<RowSection>& sections) const {
    return std::ranges::equal(sections, m_sections, {}, &RowSection::records, &RowSection::records);
}

QModelIndex RowModel::reset(QList<RowSection> sections, const QModelIndex& kept) {
    const int place = kept.row();
    beginResetModel();
    const QList<RowSection> before = std::exchange(m_sections, std::move(sections));
    const int countBefore = std::exchange(m_count, countIn(m_sections));
    endResetModel();
    if (place < 0)
        return {};

    QHash<QString, int> rows;
    for (int row = 0; row < m_count; ++row)
        rows.insert(rowIn(m_sections, row).id, row);
    // Those of headings.
    rows.remove(QString());
    for (int row = place; row < countBefore; ++row) {
        if (const auto left = rows.constFind(rowIn(before, row).id); left != rows.cend())
            return index(*left);
    }
    for (int row = place - 1; row >= 0; --row) {
        if (rows.contains(rowIn(before, row).id))
            return index(m_count - 1);
    }
    return {};
}

bool RowModel::hasHeadings() const {
    return std::ranges::any_of(m_sections, headingsOf);
}

Row RowModel::row(const QModelIndex& index) const {
    return index.isValid() ? rowIn(m_sections, index.row()) : Row{};
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
    // Views ask for the current row's even where there is none.
    if (!index.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return DisplayText::line(row(index).title);
    case Qt::AccessibleTextRole:
        return row(index).accessibleText();
    case Qt::AccessibleDescriptionRole:
        return row(index).accessibleDescription();
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
    if (!index.isValid() || positionIn(m_sections, index.row()).place < 0)
        return Qt::ItemNeverHasChildren;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}
