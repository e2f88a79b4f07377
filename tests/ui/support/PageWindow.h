// SPDX-License-Identifier: MIT
#pragma once

#include "BrewManager.h"
#include "PageDriver.h"
#include "ScriptedBrew.h"
#include "shell/DetailColumn.h"
#include "shell/OperationNotice.h"
#include "views/PackageSelection.h"

class Page;

/// One page in a window of its own, below its header, over a manager and a brew of its own.
///
/// Nothing is loaded but what the page itself loads.
struct PageWindow final {
    ScriptedBrew brew;
    BrewManager manager{brew.discovery()};
    PackageSelection selection;
    OperationNotice notice{manager};
    DetailColumn column{manager, notice};

    /// Shows the page instead of the one before and waits until it can be seen. Takes it over.
    void show(Page* page);

    [[nodiscard]] PageDriver page() const { return PageDriver(column); }
};
