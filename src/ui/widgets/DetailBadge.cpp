// SPDX-License-Identifier: MIT
#include "widgets/DetailBadge.h"

#include "style/Painting.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/Accessible.h"
#include "widgets/DisplayText.h"

#include <QPainter>

namespace {

constexpr int paddingX = 8;
constexpr double radius = 4;

struct Look {
    QColor text;
    QColor fill;
};

Look lookOf(DetailBadge::Tone tone, const Theme& theme) {
    constexpr double tint = 0.12;
    constexpr double chipTint = 0.1;
    const auto tinted = [](const QColor& color, const QColor& text) {
        return Look{text, withOpacity(color, tint)};
    };
    switch (tone) {
    case DetailBadge::Tone::Formula:
        return tinted(theme.accent, theme.accent);
    case DetailBadge::Tone::Cask:
        return tinted(theme.cask, theme.cask);
    case DetailBadge::Tone::Good:
        return tinted(theme.good, theme.goodOnTint);
    case DetailBadge::Tone::Outdated:
        return tinted(theme.outdated, theme.outdatedOnTint);
    case DetailBadge::Tone::Neutral:
        break;
    }
    return {theme.text, withOpacity(theme.secondaryText, chipTint)};
}

} // namespace

DetailBadge::DetailBadge(QString text, Tone tone, QWidget* parent)
    : QWidget(parent), m_text(DisplayText::line(text)), m_tone(tone) {
    Accessible::setRole(this, QAccessible::StaticText);
    setFont(tone == Tone::Neutral ? Typography::font(Typography::caption)
                                  : Typography::digits(11, QFont::Medium));
    setAccessibleName(m_text);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

QSize DetailBadge::sizeHint() const {
    const int paddingY = m_tone == Tone::Neutral ? 3 : 2;
    // A name of absurd length is cut rather than widening the pane.
    constexpr int widest = 400;
    return {qMin(widest, Typography::width(font(), m_text) + 2 * paddingX),
            fontMetrics().height() + 2 * paddingY};
}

void DetailBadge::paintEvent(QPaintEvent*) {
    const Look look = lookOf(m_tone, Theme::of(this));
    QPainter painter(this);
    Painting::fillRounded(&painter, rect(), radius, look.fill);
    painter.setPen(look.text);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(m_text, Qt::ElideRight, width() - 2 * paddingX));
}
