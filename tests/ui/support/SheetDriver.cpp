// SPDX-License-Identifier: MIT
#include "SheetDriver.h"

#include "Find.h"
#include "Input.h"
#include "widgets/Sheet.h"

#include <QTest>

namespace {

Sheet& waitForSheet(const QWidget& window) {
    if (!QTest::qWaitFor([&window] { return SheetDriver::isOpen(window); }))
        qFatal("No sheet opens");
    return require<Sheet>(window);
}

} // namespace

SheetDriver::SheetDriver(const QWidget& window) : m_sheet(waitForSheet(window)) {}

bool SheetDriver::isOpen(const QWidget& window) {
    return findVisible<Sheet>(window) != nullptr;
}

QWidget& SheetDriver::panel() const {
    return *m_sheet.panel();
}

QAbstractButton& SheetDriver::button(const QString& objectName) const {
    return require<QAbstractButton>(panel(), objectName);
}

void SheetDriver::press(const QString& objectName) const {
    // At first it takes no press.
    if (!QTest::qWaitFor([this] { return takesPresses(); }))
        qFatal("The sheet takes no press");
    Input::click(button(objectName));
}

bool SheetDriver::takesPresses() const {
    return !panel().testAttribute(Qt::WA_TransparentForMouseEvents);
}
