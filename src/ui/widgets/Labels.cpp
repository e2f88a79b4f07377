// SPDX-License-Identifier: MIT
#include "widgets/Labels.h"

#include "style/Typography.h"
#include "widgets/DisplayText.h"

#include <QEvent>

PlainLabel::PlainLabel(const QString& text, const QFont& font, QWidget* parent)
    : QLabel(text, parent) {
    setTextFormat(Qt::PlainText);
    setFont(font);
}

SecondaryLabel::SecondaryLabel(const QString& text, double size, QWidget* parent)
    : PlainLabel(text, Typography::font(size), parent) {
    // The role that holds the secondary colour in the theme's palette.
    setForegroundRole(QPalette::PlaceholderText);
}

ElidedLabel::ElidedLabel(const QFont& font, QWidget* parent) : PlainLabel({}, font, parent) {}

void ElidedLabel::setFullText(const QString& text) {
    if (text == m_fullText)
        return;
    m_fullText = text;
    setAccessibleName(DisplayText::line(text));
    updateGeometry();
    elide();
}

QSize ElidedLabel::sizeHint() const {
    return {Typography::width(font(), DisplayText::line(m_fullText)), fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, fontMetrics().height()};
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    elide();
}

void ElidedLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        elide();
}

void ElidedLabel::elide() {
    const QString line = DisplayText::line(m_fullText);
    const QString shown = fontMetrics().elidedText(line, Qt::ElideRight, width());
    setText(shown);
    DisplayText::setToolTip(this, shown == line ? QString() : m_fullText);
}
