// SPDX-License-Identifier: MIT
#include "style/FocusMarks.h"

#include <QAbstractScrollArea>
#include <QKeyEvent>

namespace {

/// Whether a key does anything by itself.
bool isModifier(int key) {
    return key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock;
}

void setUsesKeyboard(QWidget* window, bool usesKeyboard) {
    if (window->testAttribute(Qt::WA_KeyboardFocusChange) == usesKeyboard)
        return;
    window->setAttribute(Qt::WA_KeyboardFocusChange, usesKeyboard);
    QWidget* const focused = window->focusWidget();
    if (focused == nullptr)
        return;
    focused->update();
    if (const auto* const area = qobject_cast<QAbstractScrollArea*>(focused))
        area->viewport()->update();
}

} // namespace

void FocusMarks::show(QWidget* window) {
    setUsesKeyboard(window, true);
}

bool FocusMarks::eventFilter(QObject* watched, QEvent* event) {
    if (watched->isWidgetType()) {
        QWidget* const widget = static_cast<QWidget*>(watched);
        if (event->type() == QEvent::MouseButtonPress)
            setUsesKeyboard(widget->window(), false);
        else if (event->type() == QEvent::KeyPress &&
                 !isModifier(static_cast<QKeyEvent*>(event)->key()))
            setUsesKeyboard(widget->window(), true);
    }
    return QObject::eventFilter(watched, event);
}
