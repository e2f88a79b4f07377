// SPDX-License-Identifier: MIT
#include "AlertDriver.h"

#include "Find.h"
#include "Input.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

AlertCard* openCard() {
    for (const QWidget* const window : QApplication::topLevelWidgets()) {
        if (auto* const card = findVisible<AlertCard>(*window))
            return card;
    }
    return nullptr;
}

AlertCard* waitForCard() {
    if (!QTest::qWaitFor(&AlertDriver::isOpen))
        qFatal("No alert opens");
    return openCard();
}

QList<QPushButton*> buttonsOf(const AlertCard& card) {
    QList<QPushButton*> buttons = card.panel()->findChildren<QPushButton*>();
    std::ranges::sort(buttons, {}, [](const QPushButton* button) { return button->x(); });
    return buttons;
}

QString textOf(QWidget* widget) {
    // What is read out: without the ampersands that are doubled for the toolkit.
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

/// What can be seen of a label's text.
QString shownIn(const AlertCard& card, const QString& label) {
    return require<QLabel>(card, label).text().remove(u'\u2060').remove(u'\u200B');
}

} // namespace

AlertDriver::AlertDriver() : m_card(waitForCard()) {}

bool AlertDriver::isOpen() {
    return openCard() != nullptr;
}

QString AlertDriver::title() const {
    return shownIn(*m_card, u"alertTitle"_s);
}

QString AlertDriver::message() const {
    return shownIn(*m_card, u"alertMessage"_s);
}

QStringList AlertDriver::buttons() const {
    QStringList texts;
    for (QPushButton* const button : buttonsOf(*m_card))
        texts.append(textOf(button));
    return texts;
}

QString AlertDriver::defaultButton() const {
    QWidget* const focused = m_card->window()->focusWidget();
    return m_card->panel()->isAncestorOf(focused) ? textOf(focused) : QString();
}

void AlertDriver::press(const QString& text) const {
    const QWidget& panel = *m_card->panel();
    // At first it takes no press.
    if (!QTest::qWaitFor([&] { return !panel.testAttribute(Qt::WA_TransparentForMouseEvents); }))
        qFatal("The alert takes no press");
    for (QPushButton* const button : buttonsOf(*m_card)) {
        if (textOf(button) == text) {
            Input::click(*button);
            waitUntilClosed();
            return;
        }
    }
    qFatal("The alert has no button \"%s\"", qUtf8Printable(text));
}

void AlertDriver::escape() const {
    Input::key(Qt::Key_Escape);
    waitUntilClosed();
}

void AlertDriver::waitUntilClosed() const {
    if (!QTest::qWaitFor([this] { return m_card == nullptr || !m_card->isVisible(); }))
        qFatal("The alert doesn't close");
}
