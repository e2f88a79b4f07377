// SPDX-License-Identifier: MIT
#include "BrewPackage.h"

#include "CaskJSON.h"
#include "FormulaJSON.h"

#include <QHash>

BrewPackage BrewPackage::fromFormula(FormulaJSON formula) {
    const bool hasKeg = formula.installed && !formula.installed->isEmpty();
    // Only the first keg counts; what it doesn't say is taken as a wish of the user's.
    const FormulaInstalled keg = hasKeg ? formula.installed->constFirst() : FormulaInstalled{};
    std::optional<QString> stable;
    if (formula.versions)
        stable = std::move(formula.versions->stable);

    return {
        .name = formula.name,
        .fullName = std::move(formula.fullName).value_or(formula.name),
        .desc = std::move(formula.desc).value_or(QString()),
        .homepage = std::move(formula.homepage).value_or(QString()),
        .version = std::move(stable).value_or(keg.version),
        .installedVersion = keg.version,
        .isOutdated = formula.outdated.value_or(false),
        .dependencies = std::move(formula.dependencies).value_or(QList<QString>()),
        .type = PackageType::formula,
        .installedOnRequest = keg.installedOnRequest.value_or(true),
    };
}

BrewPackage BrewPackage::fromCask(CaskJSON cask) {
    return {
        .name = cask.token,
        .fullName = std::move(cask.fullToken).value_or(cask.token),
        .desc = std::move(cask.desc).value_or(QString()),
        .homepage = std::move(cask.homepage).value_or(QString()),
        .version = std::move(cask.version).value_or(QString()),
        .installedVersion = std::move(cask.installed).value_or(QString()),
        .isOutdated = cask.outdated.value_or(false),
        .dependencies = {},
        .type = PackageType::cask,
        .installedOnRequest = true,
    };
}

std::size_t qHash(const BrewPackage& package, std::size_t seed) {
    std::size_t hash = qHashMulti(seed, package.name, package.fullName, package.desc,
                                  package.homepage, package.version, package.installedVersion,
                                  package.isOutdated, package.dependencies.size());
    for (const QString& dependency : package.dependencies)
        hash = qHashMulti(hash, dependency);
    return qHashMulti(hash, rawValue(package.type), package.installedOnRequest);
}
