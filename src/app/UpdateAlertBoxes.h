// SPDX-License-Identifier: MIT
#pragma once

#include "UpdateAlerts.h"

#include <QFuture>
#include <QPointer>
#include <QWidget>

/// Shows the updater's alerts over a window, each after the one before it is answered. An alert
/// whose window goes away is answered as if it had been closed.
class UpdateAlertBoxes final : public UpdateAlerts {
public:
    explicit UpdateAlertBoxes(QWidget* window) : m_window(window) {}

    QCoro::Task<qsizetype> show(Alert alert) override;

private:
    QPointer<QWidget> m_window;
    /// The answer to the latest alert, shown or not.
    QFuture<qsizetype> m_lastAnswer;
};
