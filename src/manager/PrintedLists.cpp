// SPDX-License-Identifier: MIT
#include "PrintedLists.h"

#include "Blanks.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QList<QStringView> trimmedLines(const QString& text) {
    QList<QStringView> lines;
    for (const QStringView line : QStringView(text).split(u'\n')) {
        if (const QStringView trimmed = trimmedOfBlanks(line); !trimmed.isEmpty())
            lines.append(trimmed);
    }
    return lines;
}

} // namespace

QList<SearchResult> printedHits(const QString& printed, const QSet<QString>& formulae,
                                const QSet<QString>& casks) {
    QList<SearchResult> hits;
    PackageType type = PackageType::formula;
    for (const QStringView line : trimmedLines(printed)) {
        if (line.contains(u"==> Formulae"_s)) {
            type = PackageType::formula;
        } else if (line.contains(u"==> Casks"_s)) {
            type = PackageType::cask;
        } else if (!line.startsWith(u"==>"_s)) {
            const QString name = line.toString();
            const QSet<QString>& installed = type == PackageType::cask ? casks : formulae;
            hits.append({name, type, installed.contains(name)});
        }
    }
    return hits;
}

QList<BrewTap> printedTaps(const QString& printed) {
    QList<BrewTap> taps;
    for (const QStringView line : trimmedLines(printed))
        taps.append({line.toString()});
    std::ranges::stable_sort(taps, {}, &BrewTap::name);
    return taps;
}
