// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// A horizontal hairline between two parts of a page.
class HairlineDivider final : public QWidget {
    Q_OBJECT

public:
    explicit HairlineDivider(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};
