// SPDX-License-Identifier: MIT
#include "SortByName.h"

#include <QCollator>

#include <algorithm>

void sortByName(QList<BrewPackage>& packages) {
    QCollator collator(QLocale().collation());
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    const auto isBefore = [&collator](const QString& a, const QString& b) {
        return collator.compare(a, b) < 0;
    };
    std::ranges::stable_sort(packages, isBefore, &BrewPackage::name);
}
