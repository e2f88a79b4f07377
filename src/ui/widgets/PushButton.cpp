// SPDX-License-Identifier: MIT
#include "widgets/PushButton.h"

#include "widgets/DisplayText.h"

PushButton::PushButton(const QString& title, QWidget* parent)
    : PushButton(QIcon(), title, parent) {}

PushButton::PushButton(const QIcon& icon, const QString& title, QWidget* parent)
    : KeyboardButton(icon, DisplayText::label(title), parent) {
    // As all other controls. With macOS's style the Tab key would pass buttons by.
    setFocusPolicy(Qt::StrongFocus);
}
