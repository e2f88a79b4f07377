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
    setFont(fontFor(tone));
    setAccessibleName(m_text);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize DetailBadge::sizeHint() const {
    return sizeOf(font(), m_text, m_tone);
}

QFont DetailBadge::fontFor(Tone tone) {
    return tone == Tone::Neutral ? Typography::font(Typography::caption)
                                 : Typography::digits(11, QFont::Medium);
}

QSize DetailBadge::sizeOf(const QFont& font, const QString& text, Tone tone) {
    const int paddingY = tone == Tone::Neutral ? 3 : 2;
    // A name of absurd length is cut rather than widening the pane.
    constexpr int widest = 400;
    return {qMin(widest, Typography::width(font, text) + 2 * paddingX),
            QFontMetrics(font).height() + 2 * paddingY};
}

void DetailBadge::paint(QPainter* painter, const QWidget& badge, const QString& text, Tone tone) {
    const Look look = lookOf(tone, Theme::of(&badge));
    Painting::fillRounded(painter, badge.rect(), radius, look.fill);
    painter->setPen(look.text);
    painter->drawText(
        badge.rect(), Qt::AlignCenter | Qt::TextSingleLine,
        badge.fontMetrics().elidedText(text, Qt::ElideRight, badge.width() - 2 * paddingX));
}

void DetailBadge::explainIfCut(QWidget* badge, const QString& text) {
    const bool isCut = badge->width() < Typography::width(badge->font(), text) + 2 * paddingX;
    DisplayText::setToolTip(badge, isCut ? text : QString());
}

void DetailBadge::resizeEvent(QResizeEvent*) {
    explainIfCut(this, m_text);
}

void DetailBadge::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paint(&painter, *this, m_text, m_tone);
}
