// SPDX-License-Identifier: MIT
#include "views/ListPage.h"

#include "views/PackageSelection.h"
#include "widgets/RowListView.h"

#include <QStackedLayout>

using namespace Qt::StringLiterals;

ListPage::ListPage(BrewManager& manager, PackageSelection* selection, const QString& name,
                   int rowHeight, QWidget* parent)
    : Page(manager, parent),
      m_stack(new QStackedLayout(this)),
      m_state(new StateView(this)),
      m_list(new RowListView(rowHeight,
                             selection == nullptr ? RowListView::Selectable::No
                                                  : RowListView::Selectable::Yes,
                             this)) {
    m_list->setAccessibleName(name);
    m_stack->addWidget(m_state);
    m_stack->addWidget(m_list);
    if (selection == nullptr)
        return;
    const auto select = [this, selection] {
        m_list->setSelectedId(selection->selectedPackageID());
    };
    select();
    connect(selection, &PackageSelection::changed, this, select);
    connect(m_list, &RowListView::rowChosen, selection, &PackageSelection::setSelectedPackageID);
}

void ListPage::showList() {
    m_stack->setCurrentWidget(m_list);
}

void ListPage::setCoveredHeight(int height) {
    m_list->setCoveredHeight(height);
}

void ListPage::enterContent() {
    if (m_list->isVisible())
        m_list->setFocus(Qt::OtherFocusReason);
}

void ListPage::showBusy(const QString& text) {
    // Before it is shown, so that it is laid out by then.
    m_state->showBusy(text);
    m_stack->setCurrentWidget(m_state);
}

void ListPage::showSymbol(const QString& symbol, ThemeColor color, const QString& text,
                          StateView::TextSize size, StateView::Voice voice) {
    m_state->showSymbol(symbol, color, text, size, voice);
    m_stack->setCurrentWidget(m_state);
}

QString ListPage::counted(const QString& title, qsizetype count) {
    return u"%1 (%2)"_s.arg(title, QString::number(count));
}
