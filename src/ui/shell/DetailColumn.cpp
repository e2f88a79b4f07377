// SPDX-License-Identifier: MIT
#include "shell/DetailColumn.h"

#include "shell/FailureStrip.h"
#include "shell/PageHeader.h"
#include "style/Typography.h"
#include "views/Page.h"
#include "widgets/SecondaryLabel.h"

#include <QVBoxLayout>

DetailColumn::DetailColumn(BrewManager& manager, QWidget* parent)
    : QWidget(parent),
      m_layout(new QVBoxLayout(this)),
      m_header(new PageHeader(this)),
      m_failureStrip(new FailureStrip(manager, this)) {
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->addWidget(m_header);
    m_layout->addWidget(m_failureStrip);
}

void DetailColumn::setPage(Page* page) {
    m_page = page;
    m_header->setTitle(page->title());
    m_header->setControls(page->headerControls());
    connect(page, &Page::titleChanged, m_header, &PageHeader::setTitle);
    setContent(page);
}

void DetailColumn::setPlaceholder(const QString& text) {
    m_page = nullptr;
    m_header->setTitle({});
    m_header->setControls(nullptr);
    auto* const label = new SecondaryLabel(text, Typography::body);
    label->setAlignment(Qt::AlignCenter);
    setContent(label);
}

void DetailColumn::setContent(QWidget* content) {
    if (m_content != nullptr) {
        // Later, since the page may be the one that asked for another.
        m_content->hide();
        m_content->disconnect(m_header);
        m_layout->removeWidget(m_content);
        m_content->deleteLater();
    }
    m_content = content;
    m_layout->addWidget(content, 1);
}
