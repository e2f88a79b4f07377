// SPDX-License-Identifier: MIT
#include "pages/FormulaListView.h"

#include "BrewManager.h"
#include "L10n.h"

using namespace Qt::StringLiterals;

FormulaListView::FormulaListView(BrewManager& manager, PackageSelection& selection, QWidget* parent)
    : PackageListPage(manager, selection,
                      {
                          .type = PackageType::formula,
                          .packages = manager.formulae,
                          .isLoading = manager.isLoadingFormulae,
                          .load = [&manager] { return manager.loadFormulae(); },
                          .symbol = u"shippingbox"_s,
                          .title = L10n::formulae(),
                          .loading = L10n::loadingFormulae(),
                          .nothingInstalled = L10n::noFormulaeInstalled(),
                          .filterPlaceholder = L10n::filterFormulae(),
                          .refreshHelp = L10n::refreshFormulaeList(),
                          .uninstallTitle = L10n::uninstallPackage(),
                      },
                      parent) {}
