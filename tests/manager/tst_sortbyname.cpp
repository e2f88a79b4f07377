// SPDX-License-Identifier: MIT
#include "PackageNamed.h"
#include "SortByName.h"

#include <QCollator>
#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>

using namespace Qt::StringLiterals;

class SortByNameTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void followsTheLocale_data();
    void followsTheLocale();
    void keepsTheOrderOfEqualNames_data();
    void keepsTheOrderOfEqualNames();
    void agreesWithTheStandardLibrary_data();
    void agreesWithTheStandardLibrary();
    void looksAtNothingButTheName();

private:
    const QLocale m_usual;
};

namespace {

/// Packages with these names, numbered so that equal names can be told apart.
QList<BrewPackage> numbered(const QStringList& names) {
    QList<BrewPackage> packages;
    for (const QString& name : names) {
        packages.append(packageNamed(name));
        packages.last().version = QString::number(packages.size());
    }
    return packages;
}

QStringList sortedNames(const QStringList& names) {
    QList<BrewPackage> packages = numbered(names);
    sortByName(packages);
    QStringList sorted;
    for (const BrewPackage& package : packages)
        sorted.append(package.name);
    return sorted;
}

/// Names of a few letters in either case, so that many of them are equal.
QString randomName(QRandomGenerator& random) {
    static const QStringList letters{u"a"_s, u"A"_s,  u"b"_s,  u"B"_s, u"é"_s,
                                     u"ö"_s, u"あ"_s, u"가"_s, u"-"_s, u"2"_s};
    QString name;
    for (int length = random.bounded(1, 4); length > 0; --length)
        name += letters[random.bounded(static_cast<int>(letters.size()))];
    return name;
}

using Disorder = void (*)(QStringList& sortedNames, QRandomGenerator& random);

void shuffle(QStringList& names, QRandomGenerator& random) {
    std::ranges::shuffle(names, random);
}

void leaveInOrder(QStringList& /*names*/, QRandomGenerator& /*random*/) {}

void reverse(QStringList& names, QRandomGenerator& /*random*/) {
    std::ranges::reverse(names);
}

void swapAFew(QStringList& names, QRandomGenerator& random) {
    for (qsizetype i = 0; i < names.size() / 20 + 1 && !names.isEmpty(); ++i)
        names.swapItemsAt(random.bounded(names.size()), random.bounded(names.size()));
}

void riffle(QStringList& names, QRandomGenerator& /*random*/) {
    std::ranges::rotate(names, names.begin() + names.size() / 3);
}

void makeAllEqual(QStringList& names, QRandomGenerator& random) {
    for (QString& name : names)
        name = random.bounded(2) == 0 ? u"same"_s : u"SAME"_s;
}

} // namespace

Q_DECLARE_METATYPE(Disorder)

void SortByNameTest::cleanup() {
    QLocale::setDefault(m_usual);
}

void SortByNameTest::followsTheLocale_data() {
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("sorted");
    const auto row = [](const char* what, const QString& locale, const QStringList& names,
                        const QStringList& sorted) {
        QTest::newRow(what) << locale << names << sorted;
    };
    const QStringList umlauts{u"zsh"_s, u"ärta"_s, u"Apple"_s, u"apricot"_s};
    row("English: ä is an a", u"en_US"_s, umlauts, {u"Apple"_s, u"apricot"_s, u"ärta"_s, u"zsh"_s});
    row("Swedish: ä comes after z", u"sv_SE"_s, umlauts,
        {u"Apple"_s, u"apricot"_s, u"zsh"_s, u"ärta"_s});
    const QStringList kanji{u"一"_s, u"亜"_s, u"い"_s, u"abc"_s};
    row("English: kanji by radicals", u"en_US"_s, kanji, {u"abc"_s, u"い"_s, u"一"_s, u"亜"_s});
    row("Japanese: kanji by readings", u"ja_JP"_s, kanji, {u"abc"_s, u"い"_s, u"亜"_s, u"一"_s});
    const QStringList hangul{u"wget"_s, u"나"_s, u"가"_s};
    row("English: Latin before hangul", u"en_US"_s, hangul, {u"wget"_s, u"가"_s, u"나"_s});
    row("Korean: hangul before Latin", u"ko_KR"_s, hangul, {u"가"_s, u"나"_s, u"wget"_s});
}

void SortByNameTest::followsTheLocale() {
    QFETCH(QString, locale);
    QFETCH(QStringList, names);
    QFETCH(QStringList, sorted);
    if (QCollator(QLocale(u"sv_SE"_s)).compare(u"z"_s, u"ä"_s) > 0)
        QSKIP("this Qt knows no collation but one");
    QLocale::setDefault(QLocale(locale));
    QCOMPARE(sortedNames(names), sorted);
}

void SortByNameTest::keepsTheOrderOfEqualNames_data() {
    QTest::addColumn<QString>("locale");
    for (const auto* locale : {"C", "en_US", "sv_SE", "ja_JP", "ko_KR"})
        QTest::newRow(locale) << QString::fromLatin1(locale);
}

void SortByNameTest::keepsTheOrderOfEqualNames() {
    QFETCH(QString, locale);
    QLocale::setDefault(QLocale(locale));
    QCOMPARE(sortedNames({u"abc"_s, u"Abd"_s, u"abb"_s}),
             (QStringList{u"abb"_s, u"abc"_s, u"Abd"_s}));
    QCOMPARE(sortedNames({u"xz"_s, u"jq"_s, u"JQ"_s, u"Jq"_s}),
             (QStringList{u"jq"_s, u"JQ"_s, u"Jq"_s, u"xz"_s}));
    QCOMPARE(sortedNames({u"xz"_s, u"JQ"_s, u"jq"_s, u"Jq"_s}),
             (QStringList{u"JQ"_s, u"jq"_s, u"Jq"_s, u"xz"_s}));
}

void SortByNameTest::agreesWithTheStandardLibrary_data() {
    QTest::addColumn<QString>("locale");
    QTest::addColumn<Disorder>("disorder");
    for (const auto* locale : {"C", "en_US", "sv_SE", "ja_JP", "ko_KR"}) {
        const QString name = QString::fromLatin1(locale);
        QTest::addRow("%s: shuffled", locale) << name << Disorder(shuffle);
        QTest::addRow("%s: sorted", locale) << name << Disorder(leaveInOrder);
        QTest::addRow("%s: reversed", locale) << name << Disorder(reverse);
        QTest::addRow("%s: nearly sorted", locale) << name << Disorder(swapAFew);
        QTest::addRow("%s: two runs", locale) << name << Disorder(riffle);
        QTest::addRow("%s: all equal", locale) << name << Disorder(makeAllEqual);
    }
}

void SortByNameTest::agreesWithTheStandardLibrary() {
    QFETCH(QString, locale);
    QFETCH(Disorder, disorder);
    QLocale::setDefault(QLocale(locale));
    QCollator collator{QLocale(locale)};
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    const auto isBefore = [&](const QString& a, const QString& b) {
        return collator.compare(a, b) < 0;
    };
    QRandomGenerator random(20'240'229);
    for (int size = 0; size <= 300; size += size < 20 ? 1 : 28) {
        QStringList names;
        while (names.size() < size)
            names.append(randomName(random));
        std::ranges::stable_sort(names, isBefore);
        disorder(names, random);

        QList<BrewPackage> packages = numbered(names);
        QList<BrewPackage> expected = packages;
        std::ranges::stable_sort(expected, isBefore, &BrewPackage::name);
        sortByName(packages);
        QVERIFY2(packages == expected, qPrintable(u"%1 names"_s.arg(size)));
    }
}

void SortByNameTest::looksAtNothingButTheName() {
    QList<BrewPackage> packages{packageNamed(u"b"_s), packageNamed(u"a"_s), packageNamed(u"B"_s)};
    packages[0].isOutdated = true;
    packages[1].fullName = u"z/a"_s;
    packages[1].type = PackageType::cask;
    packages[2].fullName = u"a/a"_s;
    const QList<BrewPackage> expected{packages[1], packages[0], packages[2]};
    const QList<BrewPackage> untouched = packages;
    QList<BrewPackage> copy = packages;
    sortByName(copy);
    QCOMPARE(copy, expected);
    QCOMPARE(packages, untouched);
}

QTEST_GUILESS_MAIN(SortByNameTest)
#include "tst_sortbyname.moc"
