// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QScreen>
#include <QWidget>

/// What the display has of a window, rather than what it would paint if it were asked.
[[nodiscard]] inline QImage shown(const QWidget& window) {
    return window.screen()->grabWindow(window.winId()).toImage();
}
