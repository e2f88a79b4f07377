// SPDX-License-Identifier: MIT
#include "widgets/TextField.h"

#include "L10n.h"
#include "widgets/IconButton.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int buttonSize = 24;

} // namespace

TextField::TextField(const QString& accessibleName, QWidget* parent)
    : QLineEdit(parent), m_clearButton(new IconButton(u"xmark"_s, L10n::remove(), this)) {
    constexpr int symbolSize = 12;
    setAccessibleName(accessibleName);
    m_clearButton->setObjectName(u"clearField"_s);
    m_clearButton->setFixedSize(buttonSize, buttonSize);
    m_clearButton->setSymbolSize(symbolSize);
    m_clearButton->setCursor(Qt::ArrowCursor);
    // Keys have ways of their own, and a press on it leaves the focus to the field.
    m_clearButton->setFocusPolicy(Qt::NoFocus);
    connect(m_clearButton, &IconButton::clicked, this, &TextField::clear);
    connect(this, &QLineEdit::textChanged, this, &TextField::showButton);
    showButton();
}

void TextField::setMargins(int leading, int trailing) {
    m_leading = leading;
    m_trailing = trailing;
    showButton();
}

void TextField::showButton() {
    const bool isNeeded = !text().isEmpty();
    m_clearButton->setVisible(isNeeded);
    setTextMargins(m_leading, 0, isNeeded ? buttonSize : m_trailing, 0);
}

void TextField::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    const int inset = (height() - buttonSize) / 2;
    m_clearButton->move(width() - inset - buttonSize, inset);
}
