// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <QWidget>

/// A square picture with rounded corners, sharp at every pixel ratio that it has pixels for.
class RoundedPicture final : public QWidget {
    Q_OBJECT

public:
    RoundedPicture(QPixmap picture, int side, double radius, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap m_picture;
    double m_radius;
};
