// SPDX-License-Identifier: MIT
#include "PageDriver.h"

#include "Find.h"
#include "Input.h"
#include "shell/DetailColumn.h"
#include "widgets/SearchField.h"
#include "widgets/StateView.h"
#include "widgets/SymbolLabel.h"

QString PageDriver::title() const {
    return require<PageHeader>(m_root).title();
}

QString PageDriver::state() const {
    const StateView* const state = findVisible<StateView>(m_root);
    return state != nullptr ? state->text() : QString();
}

QString PageDriver::stateSymbol() const {
    const auto* const symbol = findVisible<SymbolLabel>(require<StateView>(m_root));
    return symbol != nullptr ? symbol->symbol() : QString();
}

bool PageDriver::isBusy() const {
    const StateView* const state = findVisible<StateView>(m_root);
    return state != nullptr && state->isBusy();
}

bool PageDriver::hasButton(const QString& objectName) const {
    return findVisible<QAbstractButton>(m_root, objectName) != nullptr;
}

QAbstractButton& PageDriver::button(const QString& objectName) const {
    return require<QAbstractButton>(m_root, objectName);
}

void PageDriver::press(const QString& objectName) const {
    Input::click(button(objectName));
}

bool PageDriver::hasSearchField() const {
    return findVisible<SearchField>(m_root) != nullptr;
}

SearchField& PageDriver::searchField() const {
    return require<SearchField>(m_root);
}

void PageDriver::typeToSearch(const QString& text) const {
    Input::click(searchField());
    Input::key(Qt::Key_A, Qt::ControlModifier);
    Input::type(text);
}
