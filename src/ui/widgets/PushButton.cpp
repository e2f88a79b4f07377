// SPDX-License-Identifier: MIT
#include "widgets/PushButton.h"

#include "widgets/DisplayText.h"

PushButton::PushButton(const QString& title, QWidget* parent)
    : KeyboardButton(DisplayText::label(title), parent) {}

PushButton::PushButton(const QIcon& icon, const QString& title, QWidget* parent)
    : KeyboardButton(icon, DisplayText::label(title), parent) {}
