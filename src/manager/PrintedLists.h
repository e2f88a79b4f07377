// SPDX-License-Identifier: MIT
#pragma once

#include "BrewTap.h"
#include "SearchResult.h"

#include <QList>
#include <QSet>

/// The lists that brew prints for people to read, a name in each line.

/// The hits of a search in brew's order; `formulae` and `casks` are the names of what is installed.
///
/// Some versions of brew put headings above the two kinds, others print bare names.
[[nodiscard]] QList<SearchResult> printedHits(const QString& printed, const QSet<QString>& formulae,
                                              const QSet<QString>& casks);

/// The taps, sorted by name.
[[nodiscard]] QList<BrewTap> printedTaps(const QString& printed);
