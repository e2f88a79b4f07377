// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class QMessageBox;
class QPushButton;

/// The alert that is open, as its user sees it.
class AlertDriver final {
public:
    /// Waits until an alert is open.
    AlertDriver();

    [[nodiscard]] static bool isOpen();

    [[nodiscard]] QString title() const;
    [[nodiscard]] QString message() const;
    /// The buttons' texts as they are read, in the order of their places.
    [[nodiscard]] QStringList buttons() const;
    /// The text of the button that Return presses.
    [[nodiscard]] QString defaultButton() const;

    /// Clicks the button with this text and waits until the alert is closed.
    void press(const QString& text) const;
    /// Closes it by the Escape key.
    void escape() const;

    [[nodiscard]] QMessageBox& box() const { return m_box; }

private:
    void waitUntilClosed() const;

    QMessageBox& m_box;
};
