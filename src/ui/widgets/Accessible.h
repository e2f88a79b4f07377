// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>

class QWidget;

/// What screen readers are told of widgets that the toolkit has no notion of.
namespace Accessible {

/// What the widget is; the toolkit passes over the name of one that it takes for mere room. A
/// button can be pressed in any role. A dialog or an alert keeps everything behind it out of reach.
/// A window has the menu that is open over it. Call it first of all: the toolkit may ask at every
/// change of a text, and never asks again.
void setRole(QWidget* widget, QAccessible::Role role);

/// Gives a notification, or whatever the widget is, its name, made harmless, and has it read out.
/// One that is to appear does so afterwards.
void announce(QWidget* widget, const QString& text);

} // namespace Accessible
