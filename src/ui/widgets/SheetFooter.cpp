// SPDX-License-Identifier: MIT
#include "widgets/SheetFooter.h"

#include "style/Metrics.h"
#include "style/Theme.h"
#include "widgets/Boxes.h"

#include <QPainter>

using namespace Qt::StringLiterals;

SheetFooter::SheetFooter(QWidget* button, QWidget* parent) : QWidget(parent) {
    constexpr int height = 52;
    constexpr int margin = 14;
    setObjectName(u"sheetFooter"_s);
    setFixedHeight(height);
    setLayout(Boxes::row(0, {Boxes::stretch(), button}, {margin, 0, margin, 0}));
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
