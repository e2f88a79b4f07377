// SPDX-License-Identifier: MIT
#pragma once

#include "BrewPackage.h"

/// The packages of a list whose name or description contains what was typed, in list order.
///
/// Filtering again costs something only when the list or the text is another one.
class FilteredPackages final {
public:
    /// Returns whether the result may be another one than before.
    bool update(const QList<BrewPackage>& packages, const QString& typed);

    [[nodiscard]] qsizetype size() const { return m_matches.size(); }

    [[nodiscard]] const BrewPackage& at(qsizetype index) const {
        return m_packages.at(m_matches.at(index));
    }

private:
    /// Shares the manager's data; a copy is made by neither side.
    QList<BrewPackage> m_packages;
    QString m_typed;
    QList<qsizetype> m_matches;
};
