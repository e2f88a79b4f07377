// SPDX-License-Identifier: MIT
#include "views/Page.h"

#include "widgets/Boxes.h"
#include "widgets/IconButton.h"
#include "widgets/SearchField.h"

#include <QHBoxLayout>
#include <QScrollArea>

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

void Page::setScrolledContent(QWidget* content) {
    m_scroll = Boxes::scrolling(content);
    m_scroll->setAlignment(Qt::AlignHCenter);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    setLayout(Boxes::column(0, {m_scroll}));
}

void Page::setCoveredHeight(int height) {
    const QMargins margins(0, 0, 0, height);
    if (m_scroll == nullptr || margins == layout()->contentsMargins())
        return;
    layout()->setContentsMargins(margins);
    layout()->activate();
    QWidget* const focused = window()->focusWidget();
    if (isAncestorOf(focused))
        m_scroll->ensureWidgetVisible(focused);
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
