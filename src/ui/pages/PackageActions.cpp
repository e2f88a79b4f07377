// SPDX-License-Identifier: MIT
#include "pages/PackageActions.h"

#include "BrewManager.h"
#include "L10n.h"
#include "widgets/Links.h"

#include <algorithm>

std::optional<BrewPackage> installedPackage(const BrewManager& manager, const QString& packageID) {
    for (const QList<BrewPackage>* packages : {&*manager.formulae, &*manager.casks}) {
        const auto found = std::ranges::find(*packages, packageID, &BrewPackage::id);
        if (found != packages->end())
            return *found;
    }
    return std::nullopt;
}

RowAction homepageAction(const std::optional<BrewPackage>& package) {
    const QString homepage = package ? package->homepage : QString();
    return {.kind = RowAction::Kind::Button,
            .title = L10n::homepage(),
            .isEnabled = canOpenAddress(homepage),
            .onTrigger = [homepage] { openAddress(homepage); }};
}
