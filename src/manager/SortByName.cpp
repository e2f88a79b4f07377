// SPDX-License-Identifier: MIT
#include "SortByName.h"

#include <QCollator>

#include <algorithm>
#include <vector>

namespace {

using Iterator = QList<BrewPackage>::iterator;

/// Merges two sorted neighbours; most pairs overlap only in a few elements around `middle`.
template <class Less>
void mergeNeighbours(Iterator first, Iterator middle, Iterator last, Less less) {
    const Iterator from = std::upper_bound(first, middle, *middle, less);
    if (from == middle)
        return;
    const Iterator to = std::lower_bound(middle, last, *std::prev(middle), less);
    std::inplace_merge(from, middle, to, less);
}

} // namespace

void sortByName(QList<BrewPackage>& packages) {
    QCollator collator{QLocale()};
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    const auto less = [&collator](const BrewPackage& a, const BrewPackage& b) {
        return collator.compare(a.name, b.name) < 0;
    };

    // The ends of the runs that are in order already, merged pairwise until one is left.
    std::vector<Iterator> ends{packages.begin()};
    while (ends.back() != packages.end())
        ends.push_back(std::is_sorted_until(ends.back(), packages.end(), less));
    while (ends.size() > 2) {
        std::vector<Iterator> merged{ends.front()};
        for (std::size_t i = 2; i < ends.size(); i += 2) {
            mergeNeighbours(ends[i - 2], ends[i - 1], ends[i], less);
            merged.push_back(ends[i]);
        }
        if (merged.back() != ends.back())
            merged.push_back(ends.back());
        ends = std::move(merged);
    }
}
