// SPDX-License-Identifier: MIT
#pragma once

#include "BrewManager.h"
#include "LangManager.h"
#include "PageDriver.h"
#include "ScriptedBrew.h"
#include "SidebarDriver.h"
#include "shell/ContentView.h"
#include "shell/MainWindow.h"

/// The application's window over a manager and a brew of its own.
struct AppWindow {
    explicit AppWindow(Lang lang = Lang::en) : window(manager, speaking(lang), {}) {}

    ScriptedBrew brew;
    BrewManager manager{brew.discovery()};
    MainWindow window;

    /// Shows the window and waits until it can be seen; its first refresh is under way then.
    void show();
    /// The same, and waits until the refresh is through.
    void showLoaded();
    /// Waits until no list is being loaded and all changes can be seen.
    void waitUntilLoaded();
    void choose(SidebarCategory category) const;

    [[nodiscard]] PageDriver page() const { return PageDriver(window); }

    [[nodiscard]] SidebarDriver sidebar() const { return SidebarDriver(window); }

private:
    /// Before there is a window, which would be made anew.
    [[nodiscard]] static LangManager& speaking(Lang lang);
};
