// SPDX-License-Identifier: MIT
#include "widgets/DisplayText.h"

#include <QTest>

using namespace Qt::StringLiterals;

class DisplayTextTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsWhatCannotBeSeenInALine_data();
    void showsWhatCannotBeSeenInALine();
    void keepsTheLinesOfABlock_data();
    void keepsTheLinesOfABlock();
    void breaksLinesOfABlockThatNoLayoutCouldHandle();
    void breaksWordsOfABlockBeforeItsLines();
    void leavesOutTheMiddleOfWhatNobodyCouldRead();
    void keepsTheEndsOfManyLines_data();
    void keepsTheEndsOfManyLines();
    void doesNotBreakACharacterInTwo();
    void keepsALineWithinWhatALayoutCanHandle();
    void letsLongWordsOfAParagraphWrap_data();
    void letsLongWordsOfAParagraphWrap();
    void cutsAParagraphThatNoScreenCouldShow();
    void takesNoShortcutFromALabel();
    void takesNoMarkupFromAToolTip_data();
    void takesNoMarkupFromAToolTip();
};

void DisplayTextTest::showsWhatCannotBeSeenInALine_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::newRow("nothing") << u""_s << u""_s;
    QTest::newRow("plain") << u"wget 1.2, a <b>tool</b> & %1"_s
                           << u"wget 1.2, a <b>tool</b> & %1"_s;
    QTest::newRow("not ASCII") << u"한국어 日本語 é 🍺"_s << u"한국어 日本語 é 🍺"_s;
    QTest::newRow("line breaks") << u"a\nb\tc\u2028d\u2029e"_s << u"a b c d e"_s;
    QTest::newRow("carriage return") << u"a\rb"_s << u"a␍b"_s;
    QTest::newRow("terminal colour") << u"\x1b[31mred\x1b[0m"_s << u"␛[31mred␛[0m"_s;
    QTest::newRow("NUL and bell") << u"a"_s + QChar(u'\0') + u"\a"_s << u"a␀␇"_s;
    QTest::newRow("delete") << u"a\x7f"_s << u"a␡"_s;
    QTest::newRow("upper control") << u"a\u0085b"_s << u"a\ufffdb"_s;
    QTest::newRow("right to left override") << u"abc\u202Efed"_s << u"abc\ufffdfed"_s;
    QTest::newRow("all that reorders")
        << u"\u061C\u200E\u200F\u202A\u202B\u202C\u202D\u202E\u2066\u2067\u2068\u2069"_s
        << QString(12, QChar(0xfffd));
    QTest::newRow("a script that runs from right to left") << u"שלום"_s << u"שלום"_s;
}

void DisplayTextTest::showsWhatCannotBeSeenInALine() {
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QCOMPARE(DisplayText::line(text), shown);
}

void DisplayTextTest::keepsTheLinesOfABlock_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::newRow("nothing") << u""_s << u""_s;
    QTest::newRow("lines and tabs") << u"a\n\tb\n\n"_s << u"a\n\tb\n\n"_s;
    QTest::newRow("lines as on Windows") << u"a\r\nb\r\n"_s << u"a\nb\n"_s;
    QTest::newRow("terminal colour") << u"\x1b[1mbold\n"_s << u"␛[1mbold\n"_s;
    QTest::newRow("progress on one line") << u"10%\r20%\n"_s << u"10%␍20%\n"_s;
    QTest::newRow("right to left override") << u"a\u202Eb\nc"_s << u"a\ufffdb\nc"_s;
}

void DisplayTextTest::keepsTheLinesOfABlock() {
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QCOMPARE(DisplayText::block(text), shown);
}

void DisplayTextTest::breaksLinesOfABlockThatNoLayoutCouldHandle() {
    constexpr int muchInALine = 200'000;
    constexpr int longest = 10'000;
    const QString text = u"first\n"_s + QString(muchInALine, u'x') + u"\nlast"_s;
    const QString shown = DisplayText::block(text);
    const QStringList lines = shown.split(u'\n');
    QCOMPARE(lines.constFirst(), u"first"_s);
    QCOMPARE(lines.constLast(), u"last"_s);
    for (const QString& line : lines)
        QVERIFY(line.size() <= longest);
    // Nothing is lost.
    QCOMPARE(QString(shown).remove(u'\n'), QString(text).remove(u'\n'));
}

void DisplayTextTest::breaksWordsOfABlockBeforeItsLines() {
    // A compiler's command line is one that people copy.
    const QString command = u"c++ -DNAME=value -Iinclude/of/something "_s.repeated(100);
    QVERIFY(command.size() <= 4096);
    QCOMPARE(DisplayText::block(command), command);
    const QString word(1024, u'x');
    QCOMPARE(DisplayText::block(word + u' ' + word), word + u' ' + word);
    QCOMPARE(DisplayText::block(word + word + u" b"_s), word + u'\n' + word + u" b"_s);
}

void DisplayTextTest::leavesOutTheMiddleOfWhatNobodyCouldRead() {
    constexpr int lines = 500'000;
    const QString read = u"first\n"_s + u"read\n"_s.repeated(lines) + u"last"_s;
    const QString shown = DisplayText::block(read + read);
    constexpr int longest = 3'000'000;
    QVERIFY(shown.size() < longest);
    QVERIFY(shown.startsWith(u"first\nread\n"_s));
    QVERIFY(shown.endsWith(u"\nread\nlast"_s));
    QCOMPARE(shown.count(u"\n…\n"_s), 1);

    // Where a cut would fall into a character, there is one unit less.
    const QString beer = u"🍺"_s.repeated(2 * lines);
    for (const QString& odd : {u'x' + beer + beer, beer + beer + u'x'}) {
        const QString cut = DisplayText::block(odd);
        QVERIFY(cut.isValidUtf16());
    }
}

void DisplayTextTest::keepsTheEndsOfManyLines_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("end");
    QTest::addColumn<bool>("isWhole");
    QTest::newRow("as many as are shown") << 3'999 << u"end"_s << true;
    QTest::newRow("as many, and a line break") << 3'998 << u"\n"_s << true;
    QTest::newRow("one more") << 4'000 << u"end"_s << false;
    QTest::newRow("one more, and a line break") << 3'999 << u"\n"_s << false;
    QTest::newRow("many more") << 60'000 << u"end"_s << false;
}

void DisplayTextTest::keepsTheEndsOfManyLines() {
    QFETCH(const int, count);
    QFETCH(const QString, end);
    QFETCH(const bool, isWhole);
    QString text;
    for (int i = 0; i < count; ++i)
        text += u"line %1\n"_s.arg(i);
    text += end;
    const QString shown = DisplayText::block(text);
    QCOMPARE(shown == text, isWhole);
    if (isWhole)
        return;
    const QStringList parts = shown.split(u"\n…\n"_s);
    QCOMPARE(parts.size(), 2);
    QVERIFY(text.startsWith(parts[0] + u'\n'));
    QVERIFY(text.endsWith(u'\n' + parts[1]));
    for (const QString& part : parts)
        QCOMPARE(part.count(u'\n'), 1'999);
}

void DisplayTextTest::doesNotBreakACharacterInTwo() {
    QString text;
    for (int i = 0; i < 5'000; ++i)
        text += u"🍺"_s;
    for (const QString& start : {QString(), u"x"_s}) {
        for (const QString& line : DisplayText::block(start + text).split(u'\n')) {
            QVERIFY(!line.front().isLowSurrogate());
            QVERIFY(!line.back().isHighSurrogate());
        }
    }
}

void DisplayTextTest::keepsALineWithinWhatALayoutCanHandle() {
    constexpr int megabyte = 1 << 20;
    constexpr int longest = 10'000;
    const QString text(megabyte, u'x');
    QVERIFY(DisplayText::line(text).size() <= longest);
    QVERIFY(DisplayText::line(text).startsWith(QString(1'000, u'x')));
    QVERIFY(DisplayText::line(text).endsWith(u'…'));
    QVERIFY(DisplayText::toolTip(text).size() <= longest);
    QVERIFY(DisplayText::label(text).size() <= longest);
    // What people do write is never cut.
    QCOMPARE(DisplayText::line(QString(1'000, u'y')), QString(1'000, u'y'));
}

void DisplayTextTest::letsLongWordsOfAParagraphWrap_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    const QString word(24, u'x');
    QTest::newRow("nothing") << u""_s << u""_s;
    QTest::newRow("words and lines")
        << u"Remove wget?\nIt stays away."_s << u"Remove wget?\nIt stays away."_s;
    QTest::newRow("as long as a word may be") << word + u' ' + word << word + u' ' + word;
    QTest::newRow("longer") << word + word + u"y z"_s << word + u'\u200B' + word + u"\u200By z"_s;
    QTest::newRow("terminal colour") << u"\x1b[1m"_s << u"␛[1m"_s;
    QTest::newRow("two halves of a character")
        << word.chopped(1) + u"🍺🍺"_s << word.chopped(1) + u"🍺\u200B🍺"_s;
    const QString sentence(24, u'文');
    QTest::newRow("the end of a sentence") << sentence + u"。次"_s << sentence + u"。\u200B次"_s;
    QTest::newRow("a pause") << sentence + u"、次"_s << sentence + u"、\u200B次"_s;
    QTest::newRow("a closing bracket") << sentence + u"」。次"_s << sentence + u"」。\u200B次"_s;
    QTest::newRow("an accent of its own") << word + u"\u0301y"_s << word + u"\u0301\u200By"_s;
}

void DisplayTextTest::letsLongWordsOfAParagraphWrap() {
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QCOMPARE(DisplayText::paragraph(text), shown);
}

void DisplayTextTest::cutsAParagraphThatNoScreenCouldShow() {
    constexpr int megabyte = 1 << 20;
    const QString endless = DisplayText::paragraph(QString(u"word "_s).repeated(megabyte));
    QVERIFY(endless.size() <= 2'001);
    QVERIFY(endless.startsWith("word word "_L1) && endless.endsWith(u'…'));
    const QString tall = DisplayText::paragraph(QString(u"line\n"_s).repeated(100));
    QCOMPARE(tall.count(u'\n'), 19);
    QVERIFY(tall.endsWith(u"\nline…"_s));
    // What people do write is never cut.
    const QString long2000 = QString(u"word "_s).repeated(400);
    QCOMPARE(DisplayText::paragraph(long2000), long2000);
    // Nor is a character cut in halves.
    const QString beers = DisplayText::paragraph(u"x"_s + QString(u"🍺"_s).repeated(2'000));
    QVERIFY(!beers.chopped(1).back().isHighSurrogate());
}

void DisplayTextTest::takesNoShortcutFromALabel() {
    QCOMPARE(DisplayText::label(u"Preview"_s), u"Preview"_s);
    QCOMPARE(DisplayText::label(u"a&b && c\n"_s), u"a&&b &&&& c "_s);
}

void DisplayTextTest::takesNoMarkupFromAToolTip_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("plain");
    QTest::newRow("plain") << u"Remove tap"_s << u"Remove tap"_s;
    QTest::newRow("markup") << u"<b>bold</b> <img src=x>"_s << u"<b>bold</b> <img src=x>"_s;
    QTest::newRow("entities") << u"a &amp; b & c"_s << u"a &amp; b & c"_s;
    QTest::newRow("quotes") << u"'a' \"b\""_s << u"'a' \"b\""_s;
    QTest::newRow("line break") << u"a\nb"_s << u"a b"_s;
}

void DisplayTextTest::takesNoMarkupFromAToolTip() {
    QFETCH(QString, text);
    QFETCH(QString, plain);
    // Undoes what the toolkit undoes when it shows rich text.
    QString shown = DisplayText::toolTip(text);
    QVERIFY(shown.startsWith("<qt>"_L1) && shown.endsWith("</qt>"_L1));
    shown = shown.sliced(4).chopped(5);
    QVERIFY(!shown.contains(u'<'));
    shown.replace("&lt;"_L1, "<"_L1).replace("&gt;"_L1, ">"_L1).replace("&quot;"_L1, "\""_L1);
    QCOMPARE(shown.replace("&amp;"_L1, "&"_L1), plain);
    QCOMPARE(DisplayText::toolTip({}), QString());
}

QTEST_APPLESS_MAIN(DisplayTextTest)
#include "tst_displaytext.moc"
