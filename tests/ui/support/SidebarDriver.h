// SPDX-License-Identifier: MIT
#pragma once

#include "shell/SidebarCategory.h"

#include <QRect>
#include <QStringList>

class QListView;
class QModelIndex;
class QWidget;

/// The sidebar as its user sees and handles it.
class SidebarDriver final {
public:
    explicit SidebarDriver(const QWidget& root);

    /// The titles from top to bottom; those of sections end in a colon.
    [[nodiscard]] QStringList titles() const;
    /// What stands at the end of a category's row, and whether on a coloured pill.
    [[nodiscard]] QString badge(SidebarCategory category) const;
    [[nodiscard]] bool isPill(SidebarCategory category) const;
    [[nodiscard]] QString symbol(SidebarCategory category) const;
    /// The title of the row that is selected.
    [[nodiscard]] QString selected() const;

    void click(SidebarCategory category) const;
    [[nodiscard]] QRect rect(SidebarCategory category) const;

    [[nodiscard]] QListView& view() const { return m_view; }

private:
    [[nodiscard]] QModelIndex index(SidebarCategory category) const;

    QListView& m_view;
};
