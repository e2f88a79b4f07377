// SPDX-License-Identifier: MIT
#include "widgets/SheetFooter.h"

#include "style/Metrics.h"
#include "style/Theme.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>

SheetFooter::SheetFooter(QWidget* button, QWidget* parent) : QWidget(parent) {
    constexpr int height = 52;
    constexpr int margin = 14;
    setFixedHeight(height);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(margin, 0, margin, 0);
    layout->addStretch();
    layout->addWidget(button);
}

void SheetFooter::paintEvent(QPaintEvent*) {
    const Theme& theme = Theme::of(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // Rounded like the sheet below, straight above: the upper corners lie outside the strip.
    painter.setClipRect(rect());
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.sidebar);
    painter.drawRoundedRect(rect().adjusted(0, -height(), 0, 0), Metrics::sheetRadius,
                            Metrics::sheetRadius);
    painter.fillRect(0, 0, width(), 1, theme.hairline);
}
