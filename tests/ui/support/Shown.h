// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QScreen>
#include <QWidget>

/// What the display has of a widget, rather than what it would paint if it were asked.
[[nodiscard]] inline QImage shown(const QWidget& widget) {
    const QRect area(widget.mapTo(widget.window(), QPoint()), widget.size());
    return widget.screen()->grabWindow(widget.window()->winId()).toImage().copy(area);
}
