// SPDX-License-Identifier: MIT
#include "PageHeader.h"

#include "ElidedLabel.h"
#include "Metrics.h"
#include "Painting.h"
#include "Theme.h"
#include "Typography.h"

#include <QHBoxLayout>
#include <QPainter>

PageHeader::PageHeader(QWidget* parent)
    : QWidget(parent), m_title(new ElidedLabel(this)), m_layout(new QHBoxLayout(this)) {
    constexpr int trailingMargin = 15;
    setFixedHeight(Metrics::headerHeight);
    m_title->setFont(Typography::digits(Typography::headerTitle, QFont::DemiBold));
    m_layout->setContentsMargins(Metrics::contentMargin, 0, trailingMargin, 1);
    m_layout->addWidget(m_title, 1);
}

void PageHeader::setTitle(const QString& title) {
    m_title->setFullText(title);
}

QString PageHeader::title() const {
    return m_title->fullText();
}

void PageHeader::setControls(QWidget* controls) {
    if (m_controls != nullptr) {
        // Later, since one of them may have asked for this; but they give their room at once.
        m_controls->hide();
        m_layout->removeWidget(m_controls);
        m_controls->deleteLater();
    }
    m_controls = controls;
    if (m_controls != nullptr)
        m_layout->addWidget(m_controls);
}

void PageHeader::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::drawHairline(&painter, rect(), Theme::of(this));
}
