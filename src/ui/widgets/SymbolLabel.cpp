// SPDX-License-Identifier: MIT
#include "widgets/SymbolLabel.h"

#include "style/Symbol.h"
#include "style/Theme.h"

#include <QPainter>

namespace {

QColor colorOf(SymbolLabel::Tone tone, const Theme& theme) {
    switch (tone) {
    case SymbolLabel::Tone::Secondary:
        return theme.secondaryText;
    case SymbolLabel::Tone::Accent:
        return theme.accent;
    case SymbolLabel::Tone::Good:
        return theme.good;
    case SymbolLabel::Tone::Outdated:
        break;
    }
    return theme.outdated;
}

} // namespace

SymbolLabel::SymbolLabel(QString symbol, int size, Tone tone, QWidget* parent)
    : QWidget(parent), m_symbol(std::move(symbol)), m_tone(tone) {
    setFixedSize(size, size);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void SymbolLabel::setSymbol(const QString& symbol, Tone tone) {
    if (symbol == m_symbol && tone == m_tone)
        return;
    m_symbol = symbol;
    m_tone = tone;
    update();
}

void SymbolLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Symbol::paint(&painter, m_symbol, rect(), colorOf(m_tone, Theme::of(this)));
}
