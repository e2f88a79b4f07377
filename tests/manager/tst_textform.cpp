// SPDX-License-Identifier: MIT
#include "BrewTap.h"
#include "TextForm.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class TextFormTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void quotesTextsOnOneLine_data();
    void quotesTextsOnOneLine();
    void tellsAnAbsentTextFromTheWordNone();
    void writesTruthValues();
    void countsListsAndNamesTheFirst_data();
    void countsListsAndNamesTheFirst();
};

void TextFormTest::quotesTextsOnOneLine_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("form");
    QTest::newRow("plain") << u"two words"_s << uR"("two words")"_s;
    QTest::newRow("empty") << u""_s << uR"("")"_s;
    QTest::newRow("line ends") << u"a\nb\r\n"_s << uR"("a\nb\r\n")"_s;
    QTest::newRow("tab") << u"a\tb"_s << uR"("a\tb")"_s;
    QTest::newRow("quote and backslash") << u"a\"b\\n"_s << uR"("a\"b\\n")"_s;
    QTest::newRow("not ASCII") << u"한국어 é 🍺"_s << uR"("한국어 é 🍺")"_s;
    QTest::newRow("control") << u"\u001b[1m"_s << uR"("\u{1b}[1m")"_s;
    QTest::newRow("other space") << u"\u00a0\u3000"_s << uR"("\u{a0}\u{3000}")"_s;
    QTest::newRow("other line end") << u"\u2028"_s << uR"("\u{2028}")"_s;
    QTest::newRow("direction mark") << u"\u202e"_s << uR"("\u{202e}")"_s;
}

void TextFormTest::quotesTextsOnOneLine() {
    QFETCH(QString, text);
    QFETCH(QString, form);
    QCOMPARE(textForm(text), form);
}

void TextFormTest::tellsAnAbsentTextFromTheWordNone() {
    QCOMPARE(textForm(std::optional<QString>()), u"none"_s);
    QCOMPARE(textForm(std::optional(u"none"_s)), uR"("none")"_s);
}

void TextFormTest::writesTruthValues() {
    QCOMPARE(textForm(true), u"true"_s);
    QCOMPARE(textForm(false), u"false"_s);
}

void TextFormTest::countsListsAndNamesTheFirst_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("form");
    QTest::newRow("none") << 0 << u"0"_s;
    QTest::newRow("one") << 1 << uR"(1: "tap 1")"_s;
    QTest::newRow("few") << 5 << uR"(5: "tap 1", "tap 2", "tap 3", "tap 4", "tap 5")"_s;
    QTest::newRow("many") << 6 << uR"(6: "tap 1", "tap 2", "tap 3", "tap 4", "tap 5", …)"_s;
}

void TextFormTest::countsListsAndNamesTheFirst() {
    QFETCH(int, count);
    QFETCH(QString, form);
    QList<BrewTap> taps;
    for (int i = 1; i <= count; ++i)
        taps.append({u"tap %1"_s.arg(i)});
    QCOMPARE(textForm(taps), form);
}

QTEST_GUILESS_MAIN(TextFormTest)
#include "tst_textform.moc"
