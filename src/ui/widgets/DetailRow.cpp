// SPDX-License-Identifier: MIT
#include "widgets/DetailRow.h"

#include "style/Typography.h"
#include "widgets/Boxes.h"
#include "widgets/DisplayText.h"
#include "widgets/Labels.h"
#include "widgets/Links.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int column = 100;

QLabel* makeLabel(const QString& text, QFont::Weight weight) {
    constexpr double step = 0.5;
    // The column has the same width in every language; a long word is set smaller instead.
    double size = Typography::body;
    while (size > Typography::tag &&
           Typography::width(Typography::font(size, weight), text) > column)
        size -= step;
    auto* const label = new SecondaryLabel(text, size);
    label->setFont(Typography::font(size, weight));
    label->setFixedWidth(column);
    return label;
}

} // namespace

DetailRow::DetailRow(const QString& label, const QString& value, QFont::Weight labelWeight,
                     QWidget* parent)
    : QWidget(parent) {
    auto* const text = new ElidedLabel(Typography::digits(Typography::body));
    text->setFullText(value);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setAccessibleName(label + u": "_s + DisplayText::line(value));
    // A value of absurd length is cut at the edge instead of widening the pane.
    text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setLayout(Boxes::row(0, {makeLabel(label, labelWeight), {text, 1}}));
}

DetailRow::DetailRow(const QString& label, LinkButton* value, QWidget* parent) : QWidget(parent) {
    QLabel* const widget = makeLabel(label, QFont::Medium);
    // The link's text begins where the column ends, its focus mark a little before.
    widget->setFixedWidth(column - LinkButton::focusMargin);
    setLayout(Boxes::row(0, {widget, value, Boxes::stretch()}));
}
