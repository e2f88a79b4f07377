// SPDX-License-Identifier: MIT
#pragma once

#include "views/PackageListPage.h"

/// The page of the installed formulae.
class FormulaListView final : public PackageListPage {
    Q_OBJECT

public:
    FormulaListView(BrewManager& manager, PackageSelection& selection, QWidget* parent = nullptr);
};
