// SPDX-License-Identifier: MIT
#pragma once

#include "views/PackageListPage.h"

/// The page of the installed casks.
class CaskListView final : public PackageListPage {
    Q_OBJECT

public:
    CaskListView(BrewManager& manager, PackageSelection& selection, QWidget* parent = nullptr);
};
