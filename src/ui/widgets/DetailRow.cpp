// SPDX-License-Identifier: MIT
#include "widgets/DetailRow.h"

#include "style/Typography.h"
#include "widgets/Boxes.h"
#include "widgets/DisplayText.h"
#include "widgets/Labels.h"
#include "widgets/Links.h"

#include <QTextLayout>

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
    // As a text that can be selected is set, whatever its alignment.
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

/// How far the line that letters stand on lies below the top of a text: letters of another script
/// come from a font that may be higher.
int baselineOf(const QFont& font, const QString& text, int room = 0) {
    QTextLayout layout(text, font);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    // Where it is given room it stands in the middle of that.
    const qreal above = room == 0 ? 0 : (room - line.ascent() - line.descent()) / 2;
    return qRound(above + line.ascent());
}

/// The row's column for a widget whose letters stand lower than they like to by so much.
QVBoxLayout* lowered(QWidget* widget, int by) {
    return Boxes::column(0, {widget, Boxes::stretch()}, {0, qMax(0, by), 0, 0});
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
    QLabel* const name = makeLabel(label, labelWeight);
    const int below =
        baselineOf(text->font(), DisplayText::line(value)) - baselineOf(name->font(), label);
    setLayout(Boxes::row(0, {lowered(name, below), {lowered(text, -below), 1}}));
}

DetailRow::DetailRow(const QString& label, LinkButton* value, QWidget* parent) : QWidget(parent) {
    QLabel* const widget = makeLabel(label, QFont::Medium);
    // The link's text begins where the column ends, its focus mark a little before.
    widget->setFixedWidth(column - LinkButton::focusMargin);
    const int below = baselineOf(value->font(), value->text(), value->sizeHint().height()) -
                      baselineOf(widget->font(), label);
    setLayout(Boxes::row(0, {lowered(widget, below), lowered(value, -below), Boxes::stretch()}));
}
