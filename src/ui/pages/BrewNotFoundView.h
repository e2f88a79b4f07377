// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// What the window shows when there is no Homebrew: that it is required, and where it is.
class BrewNotFoundView final : public QWidget {
    Q_OBJECT

public:
    explicit BrewNotFoundView(QWidget* parent = nullptr);
};
