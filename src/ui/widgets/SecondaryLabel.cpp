// SPDX-License-Identifier: MIT
#include "widgets/SecondaryLabel.h"

#include "style/Typography.h"

SecondaryLabel::SecondaryLabel(const QString& text, double size, QWidget* parent)
    : QLabel(text, parent) {
    setTextFormat(Qt::PlainText);
    setFont(Typography::font(size));
    // The role that holds the secondary colour in the theme's palette.
    setForegroundRole(QPalette::PlaceholderText);
}
