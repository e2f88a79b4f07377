// SPDX-License-Identifier: MIT
#include "shell/DetailColumn.h"

#include "shell/FailureStrip.h"
#include "shell/OperationStrip.h"
#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "views/Page.h"
#include "widgets/Boxes.h"
#include "widgets/Labels.h"

#include <QPainter>

#include <algorithm>

namespace {

/// Gives a widget's room away at once, but deletes it later: it may be the one that asked.
void discard(QWidget* widget, QLayout* layout) {
    widget->hide();
    layout->removeWidget(widget);
    widget->deleteLater();
}

} // namespace

PageHeader::PageHeader(QWidget* parent)
    : QWidget(parent),
      m_title(new ElidedLabel(Typography::digits(Typography::headerTitle, QFont::DemiBold))),
      m_layout(new QHBoxLayout(this)) {
    setFixedHeight(Metrics::headerHeight);
    m_layout->addWidget(m_title, 1);
}

void PageHeader::setTitle(const QString& title) {
    m_title->setFullText(title);
}

QString PageHeader::title() const {
    return m_title->fullText();
}

void PageHeader::setControls(QWidget* controls) {
    if (m_controls != nullptr)
        discard(m_controls, m_layout);
    m_controls = controls;
    if (m_controls != nullptr)
        m_layout->addWidget(m_controls);
}

void PageHeader::resizeEvent(QResizeEvent*) {
    constexpr int trailingMargin = 15;
    const int beside = std::max(0, (width() - Metrics::widestContent) / 2);
    m_layout->setContentsMargins(beside + Metrics::contentMargin, 0, beside + trailingMargin, 1);
}

void PageHeader::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::drawHairline(&painter, rect(), Theme::of(this));
}

DetailColumn::DetailColumn(BrewManager& manager, OperationNotice& notice, QWidget* parent)
    : QWidget(parent),
      m_header(new PageHeader(this)),
      m_operationStrip(new OperationStrip(notice, OperationStrip::Place::Column, this)),
      m_failureStrip(new FailureStrip(manager, this)),
      m_layout(Boxes::column(0, {m_header, m_operationStrip, m_failureStrip})) {
    setLayout(m_layout);
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

QList<QWidget*> DetailColumn::parts() const {
    return {m_header, m_operationStrip, m_failureStrip, m_content};
}

void DetailColumn::setContent(QWidget* content) {
    if (m_content != nullptr) {
        m_content->disconnect(m_header);
        discard(m_content, m_layout);
    }
    m_content = content;
    m_layout->addWidget(content, 1);
}
