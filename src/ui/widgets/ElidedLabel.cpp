// SPDX-License-Identifier: MIT
#include "widgets/ElidedLabel.h"

#include "style/Typography.h"
#include "widgets/DisplayText.h"

#include <QEvent>

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

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
    setToolTip(shown == line ? QString() : DisplayText::toolTip(m_fullText));
}
