// SPDX-License-Identifier: MIT
#pragma once

#include <QCoroTask>
#include <QStringList>

/// How the updater talks to the user: modal alerts, one after the other.
class UpdateAlerts {
public:
    enum class Style { Informational, Warning };

    /// Title and text may come from outside: they are plain text.
    struct Alert final {
        Style style{Style::Informational};
        QString title{};
        QString text{};
        /// The first is the one for the Return key, the last the one for Escape.
        QStringList buttons{};

        bool operator==(const Alert&) const = default;
    };

    UpdateAlerts() = default;
    UpdateAlerts(const UpdateAlerts&) = delete;
    UpdateAlerts& operator=(const UpdateAlerts&) = delete;
    virtual ~UpdateAlerts() = default;

    /// Gives the index of the button that the user has chosen.
    virtual QCoro::Task<qsizetype> show(Alert alert) = 0;
};
