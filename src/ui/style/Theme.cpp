// SPDX-License-Identifier: MIT
#include "style/Theme.h"

#include <QWidget>

namespace {

QColor black(double opacity) {
    return withOpacity(Qt::black, opacity);
}

QColor white(double opacity) {
    return withOpacity(Qt::white, opacity);
}

Theme makeLight() {
    const QColor text(0x1C1E21);
    const QColor accent(0x0B62D6);
    const QColor amber(0xF59E0B);
    return {
        .content = QColor(0xFFFFFF),
        .sidebar = QColor(0xF3F4F6),
        .field = QColor(0xFFFFFF),
        .text = text,
        .secondaryText = QColor(0x656A72),
        .hairline = black(0.08),
        .fieldBorder = black(0.12),
        .accent = accent,
        .onAccent = QColor(0xFFFFFF),
        .selection = withOpacity(accent, 0.12),
        .hover = black(0.04),
        .pressed = black(0.08),
        .outdated = QColor(0xB45309),
        .outdatedTag = withOpacity(amber, 0.15),
        .neutralTag = withOpacity(QColor(0x6B7078), 0.15),
        .countPill = QColor(0xC2570C),
        .onCountPill = QColor(0xFFFFFF),
        .good = QColor(0x15803D),
        .cask = QColor(0x7C3AED),
        .destructive = QColor(0xD0312D),
        .secondaryOnTint = QColor(0x565B63),
        .outdatedOnTint = QColor(0x9A4408),
        .goodOnTint = QColor(0x146C35),
        .output = QColor(0xF5F6F8),
        .failure = QColor(0xFDEFDC),
        .scrim = black(0.28),
        .sheetShadow = black(0.30),
        .overlayShadow = black(0.33),
        .overlay = withOpacity(QColor(0xFFFFFF), 0.94),
        .trough = QColor(0xE9EAEB),
        .segment = QColor(0xFFFFFF),
    };
}

Theme makeDark() {
    const QColor text(0xECEEF1);
    const QColor accent(0x5AA2FF);
    const QColor amber(0xF59E0B);
    return {
        .content = QColor(0x1E1F22),
        .sidebar = QColor(0x26282C),
        .field = QColor(0x2C2E33),
        .text = text,
        .secondaryText = QColor(0xA0A6B0),
        .hairline = white(0.09),
        .fieldBorder = white(0.15),
        .accent = accent,
        .onAccent = QColor(0x10233D),
        .selection = withOpacity(accent, 0.18),
        .hover = white(0.05),
        .pressed = white(0.09),
        .outdated = QColor(0xFBAB4A),
        .outdatedTag = withOpacity(amber, 0.15),
        .neutralTag = withOpacity(QColor(0x9AA0AA), 0.15),
        .countPill = QColor(0xC2570C),
        .onCountPill = QColor(0xFFFFFF),
        .good = QColor(0x5DD68A),
        .cask = QColor(0xB798FF),
        .destructive = QColor(0xFF6B66),
        .secondaryOnTint = QColor(0xB4B9C2),
        .outdatedOnTint = QColor(0xFBAB4A),
        .goodOnTint = QColor(0x5DD68A),
        .output = QColor(0x26282C),
        .failure = QColor(0x3A2E1D),
        .scrim = black(0.50),
        .sheetShadow = black(0.55),
        .overlayShadow = black(0.33),
        .overlay = withOpacity(QColor(0x1E1F22), 0.94),
        .trough = QColor(0x2C2E33),
        .segment = QColor(0x4A4D55),
    };
}

} // namespace

QColor withOpacity(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

const Theme& Theme::light() {
    static const Theme theme = makeLight();
    return theme;
}

const Theme& Theme::dark() {
    static const Theme theme = makeDark();
    return theme;
}

const Theme& Theme::of(const QWidget* widget) {
    return of(widget->palette());
}

const Theme& Theme::of(const QPalette& palette) {
    const bool textIsLighter = palette.color(QPalette::WindowText).lightness() >
                               palette.color(QPalette::Window).lightness();
    return textIsLighter ? dark() : light();
}

QPalette Theme::palette() const {
    QPalette palette;
    palette.setColor(QPalette::Window, content);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, field);
    palette.setColor(QPalette::AlternateBase, sidebar);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::PlaceholderText, secondaryText);
    palette.setColor(QPalette::Button, field);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, onAccent);
    palette.setColor(QPalette::ToolTipBase, sidebar);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, onAccent);
    palette.setColor(QPalette::Link, accent);
    palette.setColor(QPalette::LinkVisited, accent);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, withOpacity(secondaryText, 0.6));
    return palette;
}
