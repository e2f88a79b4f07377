// SPDX-License-Identifier: MIT
//
// Any text as what brew prints of hits and taps, and as names to sort.
#include "Blanks.h"
#include "PrintedLists.h"
#include "Require.h"
#include "SortByName.h"

#include <QCollator>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// A tab, and what the Unicode standard lists as spaces.
bool isBlank(QChar character) {
    const QStringView blanks = u" \t\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007"
                               u"\u2008\u2009\u200A\u202F\u205F\u3000";
    return blanks.contains(character);
}

void requireName(const QString& name) {
    require(!name.isEmpty(), "a name says something");
    require(!name.contains(u'\n'), "a name is one line");
    require(!isBlank(name.front()) && !isBlank(name.back()), "a name has no blanks around it");
}

/// The same hits as brew would print them.
QString printed(const QList<SearchResult>& hits) {
    QString text;
    for (const SearchResult& hit : hits) {
        text += hit.type == PackageType::cask ? u"==> Casks\n"_s : u"==> Formulae\n"_s;
        text += u'\t' + hit.name + u" \n\n"_s;
    }
    return text;
}

bool areSame(const SearchResult& a, const SearchResult& b) {
    return a.id() == b.id() && a.isInstalled == b.isInstalled;
}

void tryHits(const QString& text) {
    // Whatever else is on the first line is installed, once as a formula and once as a cask.
    const QStringList installed = text.section(u'\n', 0, 0).split(u' ');
    const QSet<QString> formulae(installed.begin(), installed.end());
    const QSet<QString> casks{installed.constFirst()};
    const QList<SearchResult> hits = printedHits(text, formulae, casks);
    for (const SearchResult& hit : hits) {
        requireName(hit.name);
        require(!hit.name.startsWith(u"==>"_s), "a heading is no name");
        require(!hit.name.contains(u"==> Formulae"_s) && !hit.name.contains(u"==> Casks"_s),
                "a heading within a line is none either");
        const bool isInstalled =
            (hit.type == PackageType::cask ? casks : formulae).contains(hit.name);
        require(hit.isInstalled == isInstalled, "installed as its own kind");
    }
    const auto again = printedHits(printed(hits), formulae, casks);
    require(std::ranges::equal(hits, again, areSame), "hits survive being printed");
}

void tryTaps(const QString& text) {
    const QList<BrewTap> taps = printedTaps(text);
    QStringList names;
    for (const BrewTap& tap : taps) {
        requireName(tap.name);
        names.append(tap.name);
    }
    require(std::ranges::is_sorted(names), "taps are sorted");

    QStringList lines;
    for (const QString& line : text.split(u'\n')) {
        if (const QStringView name = trimmedOfBlanks(line); !name.isEmpty())
            lines.append(name.toString());
    }
    require(std::ranges::is_permutation(lines, names), "no tap is lost and none is new");
    require(printedTaps(text + u"\n\n"_s).size() == taps.size(), "an empty line is no tap");
}

void trySorting(const QString& text, const QLocale& locale) {
    QLocale::setDefault(locale);
    QList<BrewPackage> packages;
    for (const QString& name : text.split(u'\n'))
        packages.append({.name = name, .version = QString::number(packages.size())});
    QList<BrewPackage> sorted = packages;
    sortByName(sorted);
    require(std::ranges::is_permutation(packages, sorted), "no package is lost and none is new");

    QCollator collator(QLocale().collation());
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    for (qsizetype i = 1; i < sorted.size(); ++i) {
        const int order = collator.compare(sorted.at(i - 1).name, sorted.at(i).name);
        const bool isKept = sorted.at(i - 1).version.toInt() < sorted.at(i).version.toInt();
        require(order < 0 || (order == 0 && isKept), "in order, and equal ones as they were");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QList<QLocale> locales{QLocale(QLocale::C), QLocale(QLocale::Korean),
                                        QLocale(QLocale::Japanese), QLocale(QLocale::Swedish)};
    const QString text = textOf(data, size);
    tryHits(text);
    tryTaps(text);
    trySorting(text, locales.at(static_cast<qsizetype>(size) % locales.size()));
    return 0;
}
