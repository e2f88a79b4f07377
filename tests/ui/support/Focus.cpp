// SPDX-License-Identifier: MIT
#include "Focus.h"

#include "Input.h"

#include <QApplication>
#include <QWidget>

QList<QWidget*> Focus::stopsIn(const QWidget& root) {
    QList<QWidget*> stops;
    for (QWidget* const widget : root.findChildren<QWidget*>()) {
        const bool takesTab = (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
        if (takesTab && widget->isVisible() && widget->isEnabled())
            stops.append(widget);
    }
    return stops;
}

bool Focus::tabTo(const std::function<bool(const QWidget&)>& isWanted) {
    constexpr int farthest = 40;
    for (int i = 0; i < farthest; ++i) {
        const QWidget* const focused = QApplication::focusWidget();
        if (focused != nullptr && isWanted(*focused))
            return true;
        Input::key(Qt::Key_Tab);
    }
    return false;
}

bool Focus::tabTo(const QString& objectName) {
    return tabTo([&](const QWidget& widget) { return widget.objectName() == objectName; });
}
