// SPDX-License-Identifier: MIT
#include "widgets/StateView.h"

#include "style/Metrics.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/Accessible.h"
#include "widgets/Boxes.h"
#include "widgets/DisplayText.h"
#include "widgets/Labels.h"
#include "widgets/Spinner.h"

StateView::StateView(QWidget* parent)
    : QWidget(parent),
      m_spinner(new Spinner(Spinner::Size::Large, this)),
      m_symbol(new SymbolLabel({}, Metrics::stateIcon, &Theme::secondaryText, this)),
      m_text(new SecondaryLabel({}, Typography::body, this)) {
    using Boxes::centered;
    Accessible::setRole(this, QAccessible::Notification);
    setLayout(Boxes::column(Metrics::stateSpacing,
                            {Boxes::stretch(), centered(m_spinner), centered(m_symbol),
                             centered(m_text), Boxes::stretch()}));
}

void StateView::showBusy(const QString& text) {
    m_spinner->show();
    m_symbol->hide();
    setText(text, TextSize::Body, Voice::Aloud);
}

void StateView::showSymbol(const QString& symbol, ThemeColor color, const QString& text,
                           TextSize size, Voice voice) {
    m_spinner->hide();
    m_symbol->setSymbol(symbol, color);
    m_symbol->show();
    setText(text, size, voice);
}

void StateView::setText(const QString& text, TextSize size, Voice voice) {
    constexpr double titleSize = 18;
    m_text->setFont(Typography::font(size == TextSize::Title ? titleSize : Typography::body));
    if (m_text->text() == text)
        return;
    m_text->setText(text);
    if (voice == Voice::Aloud)
        Accessible::announce(this, text);
    else
        setAccessibleName(DisplayText::line(text));
}

QString StateView::text() const {
    return m_text->text();
}

bool StateView::isBusy() const {
    return !m_spinner->isHidden();
}
