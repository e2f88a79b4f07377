// SPDX-License-Identifier: MIT
#include "PackageNamed.h"
#include "SecondProcess.h"
#include "SortByName.h"

#include <QCollator>

#include <cstdio>

using namespace Qt::StringLiterals;

class SortByNameTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void followsTheLocale_data();
    void followsTheLocale();
    void keepsTheOrderOfEqualNames_data();
    void keepsTheOrderOfEqualNames();
    void keepsTheOrderOfManyEqualNames();
    void followsTheLocaleOfCollationAlone_data();
    void followsTheLocaleOfCollationAlone();
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

bool knowsCollations() {
    return QCollator(QLocale(u"sv_SE"_s)).compare(u"z"_s, u"ä"_s) < 0;
}

/// Sorts its arguments as an application does whose locale nobody has set but the user.
int sortInTheUsersLocale(const QStringList& names) {
    std::fputs(qPrintable(sortedNames(names).join(u' ')), stdout);
    return 0;
}

} // namespace

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
    if (!knowsCollations())
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

void SortByNameTest::keepsTheOrderOfManyEqualNames() {
    QStringList names;
    for (int i = 0; i < 200; ++i)
        names.append(i % 3 == 0 ? u"JQ"_s : u"jq"_s);
    QCOMPARE(sortedNames(names), names);
}

void SortByNameTest::followsTheLocaleOfCollationAlone_data() {
    QTest::addColumn<QString>("collation");
    QTest::addColumn<QByteArray>("sorted");
    QTest::newRow("Swedish") << u"sv_SE.UTF-8"_s << QByteArray("apricot zsh ärta");
    QTest::newRow("English") << u"en_US.UTF-8"_s << QByteArray("apricot ärta zsh");
}

void SortByNameTest::followsTheLocaleOfCollationAlone() {
    QFETCH(QString, collation);
    QFETCH(QByteArray, sorted);
    if (!knowsCollations())
        QSKIP("this Qt knows no collation but one");
    // The names alone count: the system needs no such locales.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"LC_ALL"_s);
    environment.insert(u"LANG"_s, u"en_US.UTF-8"_s);
    environment.insert(u"LC_COLLATE"_s, collation);
    const SecondProcess process(u"sort"_s, {u"zsh"_s, u"ärta"_s, u"apricot"_s}, environment);
    QCOMPARE(process.output(), sorted);
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

int main(int argc, char* argv[]) {
    return SecondProcess::main<SortByNameTest>(argc, argv, {{u"sort"_s, sortInTheUsersLocale}});
}

#include "tst_sortbyname.moc"
