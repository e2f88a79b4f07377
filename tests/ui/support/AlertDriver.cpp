// SPDX-License-Identifier: MIT
#include "AlertDriver.h"

#include "Input.h"

#include <QAccessible>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include <algorithm>

namespace {

QMessageBox* openBox() {
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

QMessageBox& waitForBox() {
    if (!QTest::qWaitFor(&AlertDriver::isOpen))
        qFatal("No alert opens");
    QMessageBox* const box = openBox();
    if (!QTest::qWaitForWindowExposed(box))
        qFatal("The alert doesn't appear");
    return *box;
}

QString textOf(const QAbstractButton* button) {
    // What is read out: without the ampersands that are doubled for the toolkit.
    return QAccessible::queryAccessibleInterface(const_cast<QAbstractButton*>(button))
        ->text(QAccessible::Name);
}

} // namespace

AlertDriver::AlertDriver() : m_box(waitForBox()) {}

bool AlertDriver::isOpen() {
    const QMessageBox* const box = openBox();
    return box != nullptr && box->isVisible();
}

QString AlertDriver::title() const {
    return m_box.text();
}

QString AlertDriver::message() const {
    return m_box.informativeText();
}

QStringList AlertDriver::buttons() const {
    QList<QAbstractButton*> buttons = m_box.buttons();
    std::ranges::sort(buttons, {}, [](const QAbstractButton* button) { return button->x(); });
    QStringList texts;
    for (const QAbstractButton* const button : buttons)
        texts.append(textOf(button));
    return texts;
}

QString AlertDriver::defaultButton() const {
    return m_box.defaultButton() != nullptr ? textOf(m_box.defaultButton()) : QString();
}

void AlertDriver::press(const QString& text) const {
    for (const QAbstractButton* const button : m_box.buttons()) {
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
    if (!QTest::qWaitFor([] { return !isOpen(); }))
        qFatal("The alert doesn't close");
}
