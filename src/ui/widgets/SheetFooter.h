// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// The strip at the bottom of a sheet's panel, with a button at its trailing end.
class SheetFooter final : public QWidget {
    Q_OBJECT

public:
    explicit SheetFooter(QWidget* button, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};
