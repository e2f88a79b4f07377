// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

/// A plain-text label in the secondary colour of whatever theme is in force.
class SecondaryLabel final : public QLabel {
    Q_OBJECT

public:
    SecondaryLabel(const QString& text, double size, QWidget* parent = nullptr);
};
