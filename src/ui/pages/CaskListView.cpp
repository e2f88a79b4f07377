// SPDX-License-Identifier: MIT
#include "pages/CaskListView.h"

#include "BrewManager.h"
#include "L10n.h"

using namespace Qt::StringLiterals;

CaskListView::CaskListView(BrewManager& manager, PackageSelection& selection, QWidget* parent)
    : PackageListPage(manager, selection,
                      {
                          .type = PackageType::cask,
                          .packages = manager.casks,
                          .isLoading = manager.isLoadingCasks,
                          .load = [&manager] { return manager.loadCasks(); },
                          .symbol = u"macwindow"_s,
                          .title = L10n::casks(),
                          .loading = L10n::loadingCasks(),
                          .nothingInstalled = L10n::noCasksInstalled(),
                          .filterPlaceholder = L10n::filterCasks(),
                          .refreshHelp = L10n::refreshCaskList(),
                          .uninstallTitle = L10n::uninstallCask(),
                      },
                      parent) {}
