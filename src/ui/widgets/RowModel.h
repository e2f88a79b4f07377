// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/Row.h"

#include <QAbstractListModel>

/// Rows below a heading, or without one when it is empty.
struct RowSection final {
    QString heading{};
    int count{};
    /// Describes the row at a place in the section. Owns what it describes.
    std::function<Row(int place)> describe{};
    /// Where the records lie that are described: tells whether these are the rows of before.
    const void* records{};
};

/// A list of rows that are described only when somebody looks at them.
class RowModel final : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        /// The Row; of a heading, one that has nothing but a title.
        DescriptionRole = Qt::UserRole,
        StateRole,
    };

    /// Tells the state of the row at an index.
    using DescribeState = std::function<RowState(const QModelIndex& index)>;

    explicit RowModel(DescribeState describeState);

    /// Whether the rows of these sections are those that are there.
    [[nodiscard]] bool hasRowsOf(const QList<RowSection>& sections) const;
    /// Replaces all rows; no section is empty. Returns where the row that was at `kept` is now; if
    /// it is gone, the next one that is left, else the last; if there is nothing left of the rows
    /// of before, or nothing was kept, an invalid index.
    QModelIndex reset(QList<RowSection> sections, const QModelIndex& kept = {});
    [[nodiscard]] bool hasHeadings() const;
    [[nodiscard]] Row row(const QModelIndex& index) const;
    /// The index of the row with this id, or an invalid one.
    [[nodiscard]] QModelIndex indexOf(const QString& id) const;
    /// Whether there is a row at the index: neither nothing nor a heading.
    [[nodiscard]] static bool isRow(const QModelIndex& index);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    DescribeState m_describeState;
    QList<RowSection> m_sections;
    int m_count{0};
};
