// SPDX-License-Identifier: MIT
#include "widgets/HairlineDivider.h"

#include "style/Theme.h"

#include <QPainter>

HairlineDivider::HairlineDivider(QWidget* parent) : QWidget(parent) {
    setFixedHeight(1);
}

void HairlineDivider::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Theme::of(this).hairline);
}
