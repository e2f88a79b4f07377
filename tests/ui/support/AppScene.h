// SPDX-License-Identifier: MIT
#pragma once

#include "AppWindow.h"

/// Everything that the window can show: each page in each of its states, sheets, overlay, strip.
struct AppScene final {
    const char* name;
    /// Brings the window there; it is loaded with something for every page.
    std::function<void(AppWindow&)> enter;

    [[nodiscard]] static const QList<AppScene>& all();

    /// Fills the lists of a window.
    static void fill(AppWindow& app);
};
