// SPDX-License-Identifier: MIT
#include "DetailRow.h"

#include "DisplayText.h"
#include "SecondaryLabel.h"
#include "Typography.h"

#include <QHBoxLayout>

DetailRow::DetailRow(const QString& label, const QString& value, QWidget* parent)
    : QWidget(parent), m_layout(new QHBoxLayout(this)) {
    addLabel(label);
    auto* const text = new QLabel(DisplayText::line(value));
    text->setTextFormat(Qt::PlainText);
    text->setFont(Typography::digits(Typography::body));
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setAccessibleName(label + QStringLiteral(": ") + DisplayText::line(value));
    // A value of absurd length is cut at the edge instead of widening the pane.
    text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_layout->addWidget(text, 1);
}

DetailRow::DetailRow(const QString& label, QWidget* value, QWidget* parent)
    : QWidget(parent), m_layout(new QHBoxLayout(this)) {
    addLabel(label)->setFont(Typography::font(Typography::body, QFont::Medium));
    // The link brings a margin for its focus mark.
    m_layout->setSpacing(0);
    m_layout->addSpacing(-3);
    m_layout->addWidget(value);
    m_layout->addStretch();
}

SecondaryLabel* DetailRow::addLabel(const QString& label) {
    constexpr int column = 100;
    auto* const widget = new SecondaryLabel(label, Typography::body);
    widget->setFixedWidth(column);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->addWidget(widget);
    return widget;
}
