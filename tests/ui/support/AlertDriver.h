// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/AlertCard.h"

#include <QPointer>

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

    /// Clicks the button with this text, as soon as it takes presses, and waits until the alert is
    /// closed.
    void press(const QString& text) const;
    /// Closes it by the Escape key.
    void escape() const;

    [[nodiscard]] AlertCard& card() const { return *m_card; }

private:
    void waitUntilClosed() const;

    QPointer<AlertCard> m_card;
};
