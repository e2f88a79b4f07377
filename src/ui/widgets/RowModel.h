// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/Row.h"

#include <QAbstractListModel>

#include <functional>

/// A list of rows that are described only when somebody looks at them.
class RowModel final : public QAbstractListModel {
    Q_OBJECT

public:
    /// Describes the row at an index; stays valid until the next reset.
    using Describe = std::function<Row(int index)>;

    using QAbstractListModel::QAbstractListModel;

    /// Replaces all rows.
    void reset(int count, Describe describe);
    /// The same rows, some of which look different now.
    void refresh();

    [[nodiscard]] Row row(const QModelIndex& index) const;
    [[nodiscard]] bool isSection(int row) const;
    /// The index of the item with this id, or an invalid one.
    [[nodiscard]] QModelIndex indexOf(const QString& id) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    int m_count{0};
    Describe m_describe;
};
