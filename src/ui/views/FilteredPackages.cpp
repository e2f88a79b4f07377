// SPDX-License-Identifier: MIT
#include "views/FilteredPackages.h"

#include "views/TextFilter.h"

bool FilteredPackages::update(const QList<BrewPackage>& packages, const QString& typed) {
    if (packages.isSharedWith(m_packages) && typed == m_typed)
        return false;
    m_packages = packages;
    m_typed = typed;
    m_matches.clear();
    m_matches.reserve(packages.size());
    const TextFilter filter(typed);
    for (qsizetype i = 0; i < packages.size(); ++i) {
        const BrewPackage& package = packages.at(i);
        if (typed.isEmpty() || filter.matches(package.name) || filter.matches(package.desc))
            m_matches.append(i);
    }
    return true;
}
