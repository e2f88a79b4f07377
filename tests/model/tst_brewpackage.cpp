// SPDX-License-Identifier: MIT
#include "BrewPackage.h"
#include "Decoding.h"
#include "SampleReports.h"

#include <QSet>
#include <QtTest>

#include <functional>

using namespace Qt::StringLiterals;

class BrewPackageTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isMadeOfAFormula_data();
    void isMadeOfAFormula();
    void isMadeOfACask_data();
    void isMadeOfACask();
    void hasTheIdentityOfItsTypeAndName();
    void differsInEveryField_data();
    void differsInEveryField();
    void hashesItsDependenciesOneByOne();
    void countsOnceInASet();
};

namespace {

using Change = std::function<void(BrewPackage&)>;

BrewPackage teapot() {
    return {u"teapot"_s,
            u"kitchen/tools/teapot"_s,
            u"Short and stout"_s,
            u"https://teapot.example/"_s,
            u"2.0"_s,
            u"1.9"_s,
            true,
            {u"handle"_s, u"spout"_s},
            PackageType::formula,
            false};
}

FormulaJSON formulaFrom(const QByteArray& json) {
    return decoded<BrewListResponse>(R"({"formulae": [)" + json + R"(], "casks": []})")
        .value()
        .formulae.constFirst();
}

CaskJSON caskFrom(const QByteArray& json) {
    return decoded<BrewListResponse>(R"({"formulae": [], "casks": [)" + json + "]}")
        .value()
        .casks.constFirst();
}

} // namespace

void BrewPackageTest::isMadeOfAFormula_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<BrewPackage>("package");
    const auto row = [](const char* name, const QByteArray& json, const BrewPackage& package) {
        QTest::newRow(name) << json << package;
    };
    const PackageType formula = PackageType::formula;

    row("only a name", R"({"name": "a"})",
        {u"a"_s, u"a"_s, {}, {}, {}, {}, false, {}, formula, true});
    row("everything absent is null",
        R"({"name": "a", "full_name": null, "desc": null, "homepage": null, "versions": null,
            "installed": null, "outdated": null, "dependencies": null})",
        {u"a"_s, u"a"_s, {}, {}, {}, {}, false, {}, formula, true});
    row("everything present",
        R"({"name": "a", "full_name": "t/a", "desc": "d", "homepage": "h", "versions": {"stable": "2", "head": "HEAD"},
            "installed": [{"version": "1", "installed_on_request": false, "installed_as_dependency": false}],
            "outdated": true, "dependencies": ["z", "y", "z"]})",
        {u"a"_s,
         u"t/a"_s,
         u"d"_s,
         u"h"_s,
         u"2"_s,
         u"1"_s,
         true,
         {u"z"_s, u"y"_s, u"z"_s},
         formula,
         false});
    row("present but empty",
        R"({"name": "a", "full_name": "", "versions": {"stable": ""}, "installed": [{"version": "1"}]})",
        {u"a"_s, u""_s, {}, {}, u""_s, u"1"_s, false, {}, formula, true});
    row("the first of two kegs counts",
        R"({"name": "a", "installed": [{"version": "1", "installed_on_request": false},
                                       {"version": "2", "installed_on_request": true}]})",
        {u"a"_s, u"a"_s, {}, {}, u"1"_s, u"1"_s, false, {}, formula, false});
    row("the first keg says nothing of a request",
        R"({"name": "a", "installed": [{"version": "1", "installed_as_dependency": true},
                                       {"version": "2", "installed_on_request": false}]})",
        {u"a"_s, u"a"_s, {}, {}, u"1"_s, u"1"_s, false, {}, formula, true});
    row("no keg", R"({"name": "a", "versions": {"stable": "2"}, "installed": []})",
        {u"a"_s, u"a"_s, {}, {}, u"2"_s, {}, false, {}, formula, true});
    row("no stable version",
        R"({"name": "a", "versions": {"stable": null, "head": "HEAD"}, "installed": [{"version": "HEAD-1"}]})",
        {u"a"_s, u"a"_s, {}, {}, u"HEAD-1"_s, u"HEAD-1"_s, false, {}, formula, true});
    row("not said to be outdated",
        R"({"name": "a", "versions": {"stable": "2"}, "installed": [{"version": "1"}]})",
        {u"a"_s, u"a"_s, {}, {}, u"2"_s, u"1"_s, false, {}, formula, true});
    row("blanks around",
        R"({"name": " a ", "full_name": " b ", "desc": " c ", "homepage": " d ",
            "versions": {"stable": " e "}, "installed": [{"version": " f "}], "dependencies": [" g "]})",
        {u" a "_s,
         u" b "_s,
         u" c "_s,
         u" d "_s,
         u" e "_s,
         u" f "_s,
         false,
         {u" g "_s},
         formula,
         true});
    row("neither versions nor kegs", R"({"name": "a", "versions": {}, "installed": []})",
        {u"a"_s, u"a"_s, {}, {}, {}, {}, false, {}, formula, true});
}

void BrewPackageTest::isMadeOfAFormula() {
    QFETCH(QByteArray, json);
    QFETCH(BrewPackage, package);
    QCOMPARE(BrewPackage::fromFormula(formulaFrom(json)), package);
}

void BrewPackageTest::isMadeOfACask_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<BrewPackage>("package");
    const PackageType cask = PackageType::cask;
    QTest::newRow("only a token") << QByteArray(R"({"token": "a"})")
                                  << BrewPackage{u"a"_s, u"a"_s, {}, {},   {},
                                                 {},     false,  {}, cask, true};
    QTest::newRow("everything present")
        << QByteArray(
               R"({"token": "a", "full_token": "t/a", "name": ["A"], "desc": "d", "homepage": "h",
                          "version": "2", "installed": "1", "outdated": true})")
        << BrewPackage{u"a"_s, u"t/a"_s, u"d"_s, u"h"_s, u"2"_s, u"1"_s, true, {}, cask, true};
    QTest::newRow("no full token")
        << QByteArray(R"({"token": "a", "name": ["A", "t/a"], "version": "2", "outdated": true})")
        << BrewPackage{u"a"_s, u"a"_s, {}, {}, u"2"_s, {}, true, {}, cask, true};
    QTest::newRow("not said to be outdated")
        << QByteArray(R"({"token": "a", "full_token": "t/a", "version": "2", "installed": "1"})")
        << BrewPackage{u"a"_s, u"t/a"_s, {}, {}, u"2"_s, u"1"_s, false, {}, cask, true};
    QTest::newRow("blanks around")
        << QByteArray(R"({"token": " a ", "full_token": " b ", "desc": " c ", "homepage": " d ",
                          "version": " e ", "installed": " f "})")
        << BrewPackage{u" a "_s, u" b "_s, u" c "_s, u" d "_s, u" e "_s,
                       u" f "_s, false,    {},       cask,     true};
    QTest::newRow("no version, but installed")
        << QByteArray(R"({"token": "a", "installed": "1", "outdated": false})")
        << BrewPackage{u"a"_s, u"a"_s, {}, {}, {}, u"1"_s, false, {}, cask, true};
}

void BrewPackageTest::isMadeOfACask() {
    QFETCH(QByteArray, json);
    QFETCH(BrewPackage, package);
    QCOMPARE(BrewPackage::fromCask(caskFrom(json)), package);
}

void BrewPackageTest::hasTheIdentityOfItsTypeAndName() {
    BrewPackage package = teapot();
    QCOMPARE(package.id(), u"formula-teapot"_s);
    package.type = PackageType::cask;
    QCOMPARE(package.id(), u"cask-teapot"_s);

    BrewPackage upgraded = package;
    upgraded.version = u"3.0"_s;
    QCOMPARE(upgraded.id(), package.id());
    QVERIFY(upgraded != package);
}

void BrewPackageTest::differsInEveryField_data() {
    QTest::addColumn<Change>("change");
    const auto row = [](const char* name, const Change& change) { QTest::newRow(name) << change; };
    row("name", [](BrewPackage& package) { package.name = u"x"_s; });
    row("full name", [](BrewPackage& package) { package.fullName = u"x"_s; });
    row("description", [](BrewPackage& package) { package.desc = u"x"_s; });
    row("home page", [](BrewPackage& package) { package.homepage = u"x"_s; });
    row("version", [](BrewPackage& package) { package.version = u"x"_s; });
    row("installed version", [](BrewPackage& package) { package.installedVersion = u"x"_s; });
    row("outdated", [](BrewPackage& package) { package.isOutdated = false; });
    row("one dependency more", [](BrewPackage& package) { package.dependencies.append(u"lid"_s); });
    row("one dependency less", [](BrewPackage& package) { package.dependencies.removeLast(); });
    row("other order of dependencies",
        [](BrewPackage& package) { package.dependencies.swapItemsAt(0, 1); });
    row("type", [](BrewPackage& package) { package.type = PackageType::cask; });
    row("on request", [](BrewPackage& package) { package.installedOnRequest = true; });
    row("text in another field",
        [](BrewPackage& package) { std::swap(package.version, package.installedVersion); });
}

void BrewPackageTest::differsInEveryField() {
    QFETCH(Change, change);
    BrewPackage changed = teapot();
    QCOMPARE(changed, teapot());
    QCOMPARE(qHash(changed), qHash(teapot()));
    QCOMPARE(qHash(changed, 7), qHash(teapot(), 7));
    change(changed);
    QVERIFY(changed != teapot());
    QVERIFY(qHash(changed) != qHash(teapot()));
}

void BrewPackageTest::hashesItsDependenciesOneByOne() {
    BrewPackage apart = teapot();
    BrewPackage together = teapot();
    apart.dependencies = {u"ab"_s, u"c"_s};
    together.dependencies = {u"a"_s, u"bc"_s};
    QVERIFY(qHash(apart) != qHash(together));
}

void BrewPackageTest::countsOnceInASet() {
    BrewPackage upgraded = teapot();
    upgraded.installedVersion = upgraded.version;
    const QSet<BrewPackage> packages{teapot(), upgraded, teapot()};
    QCOMPARE(packages.size(), 2);
    QVERIFY(packages.contains(teapot()));
    QVERIFY(packages.contains(upgraded));
}

QTEST_GUILESS_MAIN(BrewPackageTest)
#include "tst_brewpackage.moc"
