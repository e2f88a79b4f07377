// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QString>

#include <optional>

class QWidget;
class QWindow;

/// Mouse and keys as the window system delivers them: they reach whatever is on top or has the
/// focus, and nothing that is blocked or covered.
namespace Input {

/// Clicks at a place of the widget, in its middle if none is given.
void click(const QWidget& widget, std::optional<QPoint> place = {},
           Qt::MouseButton button = Qt::LeftButton);
void press(const QWidget& widget, std::optional<QPoint> place = {});
void release(const QWidget& widget, std::optional<QPoint> place = {});
/// Moves the pointer there without a button.
void moveTo(const QWidget& widget, std::optional<QPoint> place = {});

/// Presses and releases a key in the window that has the focus.
void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
void type(const QString& text);

/// Gives the focus to the window that a window manager would give it to now.
QWindow* focusWindow();

} // namespace Input
