// SPDX-License-Identifier: MIT
#include "widgets/DetailRow.h"

#include "style/Typography.h"
#include "widgets/DisplayText.h"
#include "widgets/LinkButton.h"
#include "widgets/SecondaryLabel.h"

#include <QHBoxLayout>

namespace {

constexpr int column = 100;

} // namespace

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

DetailRow::DetailRow(const QString& label, LinkButton* value, QWidget* parent)
    : QWidget(parent), m_layout(new QHBoxLayout(this)) {
    SecondaryLabel* const widget = addLabel(label, QFont::Medium);
    // The link's text begins where the column ends, its focus mark a little before.
    widget->setFixedWidth(column - LinkButton::focusMargin);
    m_layout->addWidget(value);
    m_layout->addStretch();
}

SecondaryLabel* DetailRow::addLabel(const QString& label, QFont::Weight weight) {
    constexpr double step = 0.5;
    // The column has the same width in every language; a long word is set smaller instead.
    double size = Typography::body;
    while (size > Typography::tag &&
           Typography::width(Typography::font(size, weight), label) > column)
        size -= step;
    auto* const widget = new SecondaryLabel(label, size);
    widget->setFont(Typography::font(size, weight));
    widget->setFixedWidth(column);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->addWidget(widget);
    return widget;
}
