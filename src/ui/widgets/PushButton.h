// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/KeyboardButton.h"

#include <QPushButton>

/// A button with a title.
class PushButton : public KeyboardButton<QPushButton> {
    Q_OBJECT

public:
    /// The title is shown as it is, ampersands included.
    explicit PushButton(const QString& title, QWidget* parent = nullptr);
    PushButton(const QIcon& icon, const QString& title, QWidget* parent = nullptr);
};
