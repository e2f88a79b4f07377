// SPDX-License-Identifier: MIT
#pragma once

#include "AutoUpdater.h"
#include "BrewManager.h"
#include "CommandLineOptions.h"
#include "ToolkitTexts.h"
#include "UpdateAlertBoxes.h"
#include "shell/DesktopNotices.h"
#include "shell/MainWindow.h"
#include "shell/SleepInhibitor.h"
#include "style/SystemAppearance.h"

#include <QApplication>

#include <optional>

/// The application: makes the long-lived objects, puts them together and lives as long as
/// its window.
class LumoraApp final {
public:
    /// Updates come from `releases`; without a program they are asked for by the one that came with
    /// the application.
    LumoraApp(int& argc, char** argv, const ReleaseSource& releases);

    /// Ends the process once the window is closed. By then everything that lasts is on disk:
    /// no destructor runs.
    [[noreturn]] void run();

    [[nodiscard]] QWidget& window() { return *m_window; }

    [[nodiscard]] BrewManager& brewManager() { return *m_brewManager; }

private:
    void followDesktop();

    std::optional<QApplication> m_application;
    CommandLineOptions m_options;
    std::optional<SystemAppearance> m_appearance;
    std::optional<ToolkitTexts> m_toolkitTexts;
    std::optional<BrewManager> m_brewManager;
    std::optional<SleepInhibitor> m_sleepInhibitor;
    std::optional<MainWindow> m_window;
    std::optional<DesktopNotices> m_notices;
    std::optional<UpdateAlertBoxes> m_alerts;
    std::optional<AutoUpdater> m_updater;
};
