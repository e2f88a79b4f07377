// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessibleWidget>
#include <QHash>
#include <QListView>

/// An item of a list: read like the toolkit's, but one that can be pressed.
class ItemAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    ItemAccessible(QListView* list, int row) : m_list(list), m_row(row) {}

    [[nodiscard]] bool isValid() const override { return index().isValid(); }

    [[nodiscard]] QObject* object() const override { return nullptr; }

    [[nodiscard]] QWindow* window() const override { return parent()->window(); }

    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int place) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text kind, const QString& text) override;
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& name) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString& name) const override;

    [[nodiscard]] int row() const { return m_row; }

protected:
    [[nodiscard]] QListView* list() const { return m_list; }

    [[nodiscard]] QModelIndex index() const;
    /// Whether it is something to be chosen; a heading isn't.
    [[nodiscard]] bool isChoice() const;
    /// Whether a sheet keeps it out of reach.
    [[nodiscard]] static bool isCovered(const QListView* list);

private:
    QListView* m_list;
    int m_row;
};

/// A list of nothing but items.
///
/// The toolkit takes lists for tables, and those who read along may come too late for a cell that
/// has gone. Here the items of before are gone before the model's rows are others.
class ListAccessible : public QAccessibleWidget {
public:
    explicit ListAccessible(QListView* list);
    ~ListAccessible() override;

    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int row) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
    [[nodiscard]] QAccessibleInterface* focusChild() const override;

protected:
    [[nodiscard]] QListView* list() const { return static_cast<QListView*>(widget()); }

    [[nodiscard]] virtual QAccessibleInterface* makeItem(int row) const;

private:
    void forgetItems();

    /// Of those that somebody has asked for, by row.
    mutable QHash<int, QAccessible::Id> m_items;
    QObject m_context;
};
