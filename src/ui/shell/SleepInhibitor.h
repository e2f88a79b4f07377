// SPDX-License-Identifier: MIT
#pragma once

#include "shell/DesktopBus.h"

#include <optional>

class BrewManager;

/// Asks the desktop to stay awake from the start of an operation until none runs any more.
///
/// The services let go by themselves of what a process asked for that has ended, in whatever way.
class SleepInhibitor final : public QObject {
    Q_OBJECT

public:
    explicit SleepInhibitor(const BrewManager& manager);

private:
    void begin(const QString& reason);
    void end();
    /// Asks the service of this number, and those after it if it can't.
    void ask(std::size_t number, const QString& reason);

    DesktopBus m_bus;
    int m_running{0};
    /// Counts the times without sleep, since an answer may come when its own is over.
    int m_time{0};
    /// What ends the present one, once a service has granted it.
    std::optional<DesktopCall> m_release;
};
