// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>

class QWidget;
class Sheet;

/// The sheet that is open over a window.
class SheetDriver final {
public:
    /// Waits until a sheet is open over `window`.
    explicit SheetDriver(const QWidget& window);

    [[nodiscard]] static bool isOpen(const QWidget& window);

    [[nodiscard]] QWidget& panel() const;
    [[nodiscard]] QAbstractButton& button(const QString& objectName) const;
    /// Clicks a button of it, as soon as it takes presses.
    void press(const QString& objectName) const;
    [[nodiscard]] bool takesPresses() const;

    [[nodiscard]] Sheet& sheet() const { return m_sheet; }

private:
    Sheet& m_sheet;
};
