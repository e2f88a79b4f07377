// SPDX-License-Identifier: MIT
#pragma once

#include "shell/SidebarCategory.h"
#include "views/View.h"

class QListView;
class QModelIndex;
class QStandardItem;
class QStandardItemModel;

/// The left column: the categories in titled sections, with live counts. Reads only.
class SidebarView final : public View {
    Q_OBJECT

public:
    explicit SidebarView(BrewManager& manager, QWidget* parent = nullptr);

    void setSelection(std::optional<SidebarCategory> category);

    /// So much of the sidebar, from below, is covered by something else.
    void setCoveredHeight(int height);

    [[nodiscard]] QListView* list() const { return m_list; }

Q_SIGNALS:
    void categoryChosen(SidebarCategory category);
    /// The user wants to go on in it: not by arrow key, which only passes.
    void categoryOpened(SidebarCategory category);

protected:
    void render() override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// Says so, unless it is a heading's index.
    void open(const QModelIndex& index);
    void addHeading(const QString& title);
    void addCategory(SidebarCategory category);
    void setCount(SidebarCategory category, qsizetype count);
    [[nodiscard]] QStandardItem* itemOf(SidebarCategory category) const;

    QStandardItemModel* m_model;
    QListView* m_list;
};
