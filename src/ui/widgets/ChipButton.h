// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/KeyboardButton.h"

#include <QAbstractButton>

/// A chip that leads somewhere: looks like a neutral DetailBadge, and is pressed like a button.
class ChipButton final : public KeyboardButton<QAbstractButton> {
    Q_OBJECT

public:
    explicit ChipButton(const QString& text, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};
