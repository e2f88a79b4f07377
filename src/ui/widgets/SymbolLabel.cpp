// SPDX-License-Identifier: MIT
#include "widgets/SymbolLabel.h"

#include "style/Symbol.h"

#include <QPainter>

SymbolLabel::SymbolLabel(QString symbol, int size, ThemeColor color, QWidget* parent)
    : QWidget(parent), m_symbol(std::move(symbol)), m_color(color) {
    setFixedSize(size, size);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void SymbolLabel::setSymbol(const QString& symbol, ThemeColor color) {
    if (symbol == m_symbol && color == m_color)
        return;
    m_symbol = symbol;
    m_color = color;
    update();
}

void SymbolLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Symbol::paint(&painter, m_symbol, rect(), Theme::of(this).*m_color);
}
