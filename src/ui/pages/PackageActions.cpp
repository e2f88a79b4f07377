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

QHash<QString, QString> installedFormulae(const BrewManager& manager, const QStringList& names) {
    QHash<QString, QString> ids;
    for (const BrewPackage& formula : *manager.formulae) {
        if (!formula.isAmong(names))
            continue;
        for (const QString& name : {formula.name, formula.fullName})
            ids.insert(name, formula.id());
    }
    return ids;
}

RowAction homepageAction(const std::optional<BrewPackage>& package) {
    const QString homepage = package ? package->homepage : QString();
    return {.kind = RowAction::Kind::Button,
            .title = L10n::homepage(),
            .isEnabled = canOpenAddress(homepage),
            .onTrigger = [homepage] { openAddress(homepage); }};
}
