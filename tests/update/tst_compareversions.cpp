// SPDX-License-Identifier: MIT
#include "CompareVersions.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class CompareVersionsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void comparesNumberByNumber_data();
    void comparesNumberByNumber();
};

void CompareVersionsTest::comparesNumberByNumber_data() {
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<int>("expected");

    const auto row = [](const char* what, const QString& a, const QString& b, int expected) {
        QTest::newRow(what) << a << b << expected;
    };
    row("numbers, not texts", u"1.2.10"_s, u"1.2.9"_s, 1);
    row("0.1.10 after 0.1.9", u"0.1.10"_s, u"0.1.9"_s, 1);
    row("first difference decides", u"2"_s, u"1.9.9"_s, 1);
    row("last difference decides", u"1.2.3"_s, u"1.2.4"_s, -1);
    row("same", u"0.1.9"_s, u"0.1.9"_s, 0);
    row("missing pieces are 0", u"1.2"_s, u"1.2.0"_s, 0);
    row("missing pieces are 0, twice", u"1.0"_s, u"1.0.0.0"_s, 0);
    row("missing pieces are less than 1", u"1.2"_s, u"1.2.0.1"_s, -1);
    row("more pieces", u"1.2.0.1"_s, u"1.2"_s, 1);
    row("leading zeros", u"1.02"_s, u"1.2"_s, 0);
    row("both empty", u""_s, u""_s, 0);
    row("empty is 0", u""_s, u"0.0.0"_s, 0);
    row("empty is less than any", u""_s, u"0.0.1"_s, -1);
    row("no number at all", u"latest"_s, u"0"_s, 0);
    row("no number against one", u"latest"_s, u"0.1.9"_s, -1);
    row("a text piece is left out", u"1.x.3"_s, u"1.3"_s, 0);
    row("a text piece moves the rest up", u"1.x.3"_s, u"1.2.9"_s, 1);
    row("a mixed piece is a text", u"1.2.3-beta"_s, u"1.2"_s, 0);
    row("a mixed piece is a text, second", u"1.2"_s, u"1.2.3rc1"_s, 0);
    row("only a prefix is removed by others", u"v1.2.3"_s, u"2.3"_s, 0);
    row("empty pieces are left out", u"1..2"_s, u"1.2"_s, 0);
    row("dots around", u".1.2."_s, u"1.2"_s, 0);
    row("only dots", u"..."_s, u"0"_s, 0);
    row("blanks make a text", u"1. 9"_s, u"1.1"_s, -1);
    row("a line feed makes a text", u"1.9\n"_s, u"1.1"_s, -1);
    row("other digits make a text", u"1.\u0669"_s, u"1.1"_s, -1);
    row("hexadecimal makes a text", u"1.0x9"_s, u"1.1"_s, -1);
    row("a sign is part of a number", u"1.-1"_s, u"1.0"_s, -1);
    row("a plus, too", u"1.+1"_s, u"1.1"_s, 0);
    row("a sign alone is a text", u"1.-"_s, u"1"_s, 0);
    row("dates", u"20260131.2"_s, u"20260131.1"_s, 1);
    row("largest number", u"9223372036854775807"_s, u"9223372036854775806"_s, 1);
    row("too large for a number", u"9223372036854775808"_s, u"1"_s, -1);
}

void CompareVersionsTest::comparesNumberByNumber() {
    QFETCH(const QString, a);
    QFETCH(const QString, b);
    QFETCH(const int, expected);
    QCOMPARE(compareVersions(a, b), expected);
    QCOMPARE(compareVersions(b, a), -expected);
}

QTEST_APPLESS_MAIN(CompareVersionsTest)
#include "tst_compareversions.moc"
