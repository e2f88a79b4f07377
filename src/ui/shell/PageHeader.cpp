// SPDX-License-Identifier: MIT
#include "shell/PageHeader.h"

#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/ElidedLabel.h"

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
