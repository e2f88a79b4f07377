// SPDX-License-Identifier: MIT
#include "widgets/ChipButton.h"

#include "style/Painting.h"
#include "style/Theme.h"
#include "widgets/DetailBadge.h"
#include "widgets/DisplayText.h"

#include <QPainter>

namespace {

constexpr auto tone = DetailBadge::Tone::Neutral;

} // namespace

ChipButton::ChipButton(const QString& text, QWidget* parent) : KeyboardButton(parent) {
    setText(DisplayText::line(text));
    // The toolkit takes an ampersand for the mark of one.
    setShortcut({});
    setAccessibleName(this->text());
    setFont(DetailBadge::fontFor(tone));
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

QSize ChipButton::sizeHint() const {
    return DetailBadge::sizeOf(font(), text(), tone);
}

void ChipButton::resizeEvent(QResizeEvent*) {
    DetailBadge::explainIfCut(this, text());
}

void ChipButton::paintEvent(QPaintEvent*) {
    const Theme& theme = Theme::of(this);
    QPainter painter(this);
    if (isDown() || underMouse())
        Painting::fillRounded(&painter, rect(), DetailBadge::radius,
                              isDown() ? theme.pressed : theme.hover);
    DetailBadge::paint(&painter, *this, text(), tone);
    if (Painting::showsFocus(this))
        Painting::drawFocusRing(&painter, rect(), DetailBadge::radius, theme);
}
