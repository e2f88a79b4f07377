// SPDX-License-Identifier: MIT
#include "widgets/ScrollPane.h"

#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Theme.h"
#include "widgets/Accessible.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

ScrollPane::ScrollPane(QWidget* content, QWidget* parent) : QScrollArea(parent) {
    Accessible::setRole(this, QAccessible::Grouping);
    setWidgetResizable(true);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setViewportMargins(focusMargin, focusMargin, focusMargin, focusMargin);
    setWidget(content);
    // What is below is to be seen through both; setWidget() fills the content.
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

void ScrollPane::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Home)
        verticalScrollBar()->triggerAction(QScrollBar::SliderToMinimum);
    else if (event->key() == Qt::Key_End)
        verticalScrollBar()->triggerAction(QScrollBar::SliderToMaximum);
    else
        QScrollArea::keyPressEvent(event);
}

bool ScrollPane::event(QEvent* event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    if (event->type() != QEvent::Paint)
        return QScrollArea::event(event);
    // The surface around the viewport.
    QPainter painter(this);
    if (Painting::showsFocus(this))
        Painting::drawFocusRing(&painter, rect(), Metrics::sheetRadius, Theme::of(this));
    return true;
}
