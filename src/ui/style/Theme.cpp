// SPDX-License-Identifier: MIT
#include "style/Theme.h"

#include <QWidget>

#include <array>

namespace {

using Contrast = Theme::Contrast;

/// All themes side by side: every colour as it is in light and in dark surroundings.
Theme makeTheme(bool isDark, Contrast contrast) {
    const auto pick = [isDark](QRgb light, QRgb dark) { return QColor(isDark ? dark : light); };
    const auto shade = [isDark](QColor color, double light, double dark) {
        return withOpacity(color, isDark ? dark : light);
    };
    // Where stronger contrasts are asked for, lines and quiet texts come forward.
    const auto clear = [contrast](const QColor& usual, const QColor& higher) {
        return contrast == Contrast::Higher ? higher : usual;
    };
    const QColor ink = pick(0x000000, 0xFFFFFF);
    const QColor accent = pick(0x0B62D6, 0x5AA2FF);
    return {
        .content = pick(0xFFFFFF, 0x1E1F22),
        .sidebar = pick(0xF3F4F6, 0x26282C),
        .field = pick(0xFFFFFF, 0x2C2E33),
        .text = pick(0x1C1E21, 0xECEEF1),
        .secondaryText = clear(pick(0x656A72, 0xA0A6B0), pick(0x41454C, 0xCDD2DA)),
        .hairline = clear(shade(ink, 0.08, 0.09), shade(ink, 0.32, 0.36)),
        .fieldBorder = clear(shade(ink, 0.12, 0.15), shade(ink, 0.50, 0.50)),
        .accent = accent,
        .onAccent = pick(0xFFFFFF, 0x10233D),
        .selection = shade(accent, 0.12, 0.18),
        .hover = shade(ink, 0.04, 0.05),
        .pressed = shade(ink, 0.08, 0.09),
        .outdated = pick(0xB45309, 0xFBAB4A),
        .outdatedTag = withOpacity(QColor(0xF59E0B), 0.15),
        .neutralTag = withOpacity(pick(0x6B7078, 0x9AA0AA), 0.15),
        .countPill = QColor(0xC2570C),
        .onCountPill = QColor(0xFFFFFF),
        .good = pick(0x15803D, 0x5DD68A),
        .cask = pick(0x7C3AED, 0xB798FF),
        .destructive = pick(0xD0312D, 0xFF6B66),
        .onDestructive = pick(0xFFFFFF, 0x1A0D0D),
        .secondaryOnTint = clear(pick(0x565B63, 0xB4B9C2), pick(0x34383E, 0xDDE1E7)),
        .outdatedOnTint = pick(0x9A4408, 0xFBAB4A),
        .goodOnTint = pick(0x146C35, 0x5DD68A),
        .output = pick(0xF5F6F8, 0x26282C),
        .failure = pick(0xFDEFDC, 0x3A2E1D),
        .operationFailure = pick(0xFCE9E8, 0x3B2626),
        .scrim = shade(Qt::black, 0.28, 0.50),
        .sheetShadow = shade(Qt::black, 0.30, 0.55),
        .card = pick(0xFFFFFF, 0x26282C),
        .cardScrim = shade(Qt::black, 0.32, 0.56),
        .overlayShadow = withOpacity(Qt::black, 0.33),
        .overlay = withOpacity(pick(0xFFFFFF, 0x2C2E33), 0.985),
        .trough = pick(0xE9EAEB, 0x2C2E33),
        .segment = pick(0xFFFFFF, 0x4A4D55),
    };
}

const Theme& themeFor(bool isDark, Contrast contrast) {
    static const std::array themes{
        makeTheme(false, Contrast::Usual), makeTheme(false, Contrast::Higher),
        makeTheme(true, Contrast::Usual), makeTheme(true, Contrast::Higher)};
    return themes.at((isDark ? 2U : 0U) + (contrast == Contrast::Higher ? 1U : 0U));
}

} // namespace

QColor withOpacity(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

const Theme& Theme::light(Contrast contrast) {
    return themeFor(false, contrast);
}

const Theme& Theme::dark(Contrast contrast) {
    return themeFor(true, contrast);
}

const Theme& Theme::of(const QWidget* widget) {
    return of(widget->palette());
}

const Theme& Theme::of(const QPalette& palette) {
    const bool textIsLighter = palette.color(QPalette::WindowText).lightness() >
                               palette.color(QPalette::Window).lightness();
    const Theme& higher = themeFor(textIsLighter, Contrast::Higher);
    return palette.color(QPalette::PlaceholderText) == higher.secondaryText
               ? higher
               : themeFor(textIsLighter, Contrast::Usual);
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
