// SPDX-License-Identifier: MIT
#pragma once

#include "ListDriver.h"

#include <QAbstractButton>

class SearchField;

/// The page that is shown below a widget: its header, its state or its list.
class PageDriver final {
public:
    explicit PageDriver(const QWidget& root) : m_root(root) {}

    [[nodiscard]] QString title() const;

    /// The text shown instead of a list; empty while a list is shown.
    [[nodiscard]] QString state() const;
    /// The symbol above that text; empty while it is a spinner.
    [[nodiscard]] QString stateSymbol() const;
    [[nodiscard]] bool isBusy() const;

    [[nodiscard]] bool hasList() const { return ListDriver::isShown(m_root); }

    [[nodiscard]] ListDriver list() const { return ListDriver(m_root); }

    [[nodiscard]] bool hasButton(const QString& objectName) const;
    [[nodiscard]] QAbstractButton& button(const QString& objectName) const;
    void press(const QString& objectName) const;

    [[nodiscard]] bool hasSearchField() const;
    [[nodiscard]] SearchField& searchField() const;
    /// Clicks into the search field and types this instead of what is there.
    void typeToSearch(const QString& text) const;

private:
    const QWidget& m_root;
};
