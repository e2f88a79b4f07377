// SPDX-License-Identifier: MIT
#include "views/Page.h"

#include "widgets/IconButton.h"
#include "widgets/SearchField.h"

#include <QHBoxLayout>

using namespace Qt::StringLiterals;

Page::Page(BrewManager& manager, QWidget* parent)
    : View(manager, parent), m_headerControls(new QWidget(this)) {
    constexpr int spacing = 10;
    auto* const layout = new QHBoxLayout(m_headerControls);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
}

void Page::showEvent(QShowEvent* event) {
    if (!std::exchange(m_wasShown, true))
        firstShown();
    View::showEvent(event);
}

void Page::setTitle(const QString& title) {
    if (title == m_title)
        return;
    m_title = title;
    Q_EMIT titleChanged(title);
}

void Page::addHeaderControl(QWidget* control) {
    m_headerControls->layout()->addWidget(control);
}

SearchField* Page::addSearchField(const QString& placeholder) {
    m_searchField = new SearchField(placeholder);
    addHeaderControl(m_searchField);
    connect(m_searchField, &SearchField::leftDownwards, this, &Page::enterContent);
    return m_searchField;
}

QString Page::searchText() const {
    return m_searchField->text();
}

IconButton* Page::addRefreshButton(const QString& toolTip) {
    m_refreshButton = new IconButton(u"arrow.clockwise"_s, toolTip);
    m_refreshButton->setObjectName(u"refreshButton"_s);
    addHeaderControl(m_refreshButton);
    return m_refreshButton;
}

void Page::focusSearch() const {
    if (m_searchField != nullptr && m_searchField->isVisible()) {
        m_searchField->setFocus(Qt::OtherFocusReason);
        m_searchField->selectAll();
    }
}

void Page::refresh() const {
    if (m_refreshButton != nullptr && m_refreshButton->isVisible())
        m_refreshButton->click();
}
