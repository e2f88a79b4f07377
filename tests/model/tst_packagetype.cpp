// SPDX-License-Identifier: MIT
#include "BrewTap.h"
#include "OutdatedPackage.h"
#include "PackageType.h"
#include "SearchResult.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class PackageTypeTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hasATextValue_data();
    void hasATextValue();
    void takesNoOtherText_data();
    void takesNoOtherText();
    void tellsPackagesApart_data();
    void tellsPackagesApart();
};

void PackageTypeTest::hasATextValue_data() {
    QTest::addColumn<PackageType>("type");
    QTest::addColumn<QString>("text");
    QTest::newRow("formula") << PackageType::formula << u"formula"_s;
    QTest::newRow("cask") << PackageType::cask << u"cask"_s;
}

void PackageTypeTest::hasATextValue() {
    QFETCH(PackageType, type);
    QFETCH(QString, text);
    QCOMPARE(rawValue(type), text);
    QCOMPARE(packageTypeFromRawValue(text), std::optional(type));
}

void PackageTypeTest::takesNoOtherText_data() {
    QTest::addColumn<QString>("text");
    for (const char* const text :
         {"Formula", "CASK", "", " cask", "cask ", "casks", "formulae", "c"})
        QTest::addRow("\"%s\"", text) << QString::fromLatin1(text);
}

void PackageTypeTest::takesNoOtherText() {
    QFETCH(QString, text);
    QCOMPARE(packageTypeFromRawValue(text), std::nullopt);
}

void PackageTypeTest::tellsPackagesApart_data() {
    QTest::addColumn<PackageType>("type");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("id");
    QTest::newRow("formula") << PackageType::formula << u"wget"_s << u"formula-wget"_s;
    QTest::newRow("cask of the same name") << PackageType::cask << u"wget"_s << u"cask-wget"_s;
    QTest::newRow("with its tap") << PackageType::cask << u"user/repo/tool"_s
                                  << u"cask-user/repo/tool"_s;
    QTest::newRow("name that looks like an id")
        << PackageType::formula << u"cask-x"_s << u"formula-cask-x"_s;
    QTest::newRow("no name") << PackageType::formula << u""_s << u"formula-"_s;
    QTest::newRow("hostile") << PackageType::cask << u"%1 & <b>"_s << u"cask-%1 & <b>"_s;
}

void PackageTypeTest::tellsPackagesApart() {
    QFETCH(PackageType, type);
    QFETCH(QString, name);
    QFETCH(QString, id);
    QCOMPARE(packageID(type, name), id);
    QCOMPARE((OutdatedPackage{name, u"1"_s, u"2"_s, type}.id()), id);
    QCOMPARE((SearchResult{name, type, true}.id()), id);
    QCOMPARE(BrewTap{name}.id(), name);
}

QTEST_GUILESS_MAIN(PackageTypeTest)
#include "tst_packagetype.moc"
