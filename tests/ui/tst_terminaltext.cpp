// SPDX-License-Identifier: MIT
#include "widgets/DisplayText.h"
#include "widgets/TerminalText.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TerminalTextTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsAsATerminalWouldShowIt_data();
    void readsAsATerminalWouldShowIt();
    void isHarmlessInATranscript();
    void leavesOutTheMiddleBeforeAnythingElse();
};

void TerminalTextTest::readsAsATerminalWouldShowIt_data() {
    QTest::addColumn<QString>("printed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("nothing") << u""_s << u""_s;
    QTest::newRow("plain") << u"==> Pouring\n\ta <b>\n"_s << u"==> Pouring\n\ta <b>\n"_s;
    QTest::newRow("colours") << u"\x1b[34m==>\x1b[0m \x1b[1;4mPouring\x1b[0m\n"_s
                             << u"==> Pouring\n"_s;
    QTest::newRow("colour by its parts") << u"\x1b[38:2::1:2:3mred\x1b[m"_s << u"red"_s;
    QTest::newRow("cursor moved") << u"a\x1b[2K\x1b[1Ab\x1b[?25l"_s << u"ab"_s;
    QTest::newRow("title and link")
        << u"\x1b]0;brew\aa \x1b]8;;https://example.org\x1b\\link\x1b]8;;\x1b\\ b"_s
        << u"a link b"_s;
    QTest::newRow("device string") << u"\x1bP1$q\x1b\\a\x1b^x\x1b\\b\x1b_y\x1b\\c"_s << u"abc"_s;
    QTest::newRow("set of characters") << u"\x1b(Ba\x1b=b\u001b7c"_s << u"abc"_s;
    QTest::newRow("progress") << u"##  10%\r####  50%\r######  100%\ndone\n"_s
                              << u"######  100%\ndone\n"_s;
    QTest::newRow("shorter progress") << u"a long line\rshort\n"_s << u"short\n"_s;
    QTest::newRow("progress of the line alone") << u"first\n10%\r90%"_s << u"first\n90%"_s;
    QTest::newRow("lines as on Windows") << u"a\r\nb\r\r\nc"_s << u"a\nb\nc"_s;
    QTest::newRow("return at the end") << u"100%\r"_s << u"100%"_s;
    QTest::newRow("return and colour") << u"100%\r\x1b[K\n"_s << u"100%\n"_s;
    QTest::newRow("spinner") << u"-\b\\\b|\b/"_s << u"/"_s;
    QTest::newRow("back to the start of the line") << u"a\nb\b\b\bc"_s << u"a\nc"_s;
    QTest::newRow("back over two halves of one") << u"a🍺\bb"_s << u"ab"_s;
    QTest::newRow("bell") << u"a\ab"_s << u"ab"_s;
    QTest::newRow("colour broken off") << u"a\x1b[1;3\nb"_s << u"a\nb"_s;
    QTest::newRow("escape at the end") << u"a\x1b"_s << u"a"_s;
    QTest::newRow("sequence at the end") << u"a\x1b["_s << u"a"_s;
    QTest::newRow("title broken off") << u"a\x1b]0;title\nb\n"_s << u"a\nb\n"_s;
    QTest::newRow("two in one") << u"a\x1b]0;x\x1b]0;y\ab"_s << u"ab"_s;
}

void TerminalTextTest::readsAsATerminalWouldShowIt() {
    QFETCH(QString, printed);
    QFETCH(QString, shown);
    QCOMPARE(terminalText(printed), shown);
}

void TerminalTextTest::isHarmlessInATranscript() {
    const QString nul(1, QChar(u'\0'));
    QCOMPARE(DisplayText::transcript(u"\x1b[1ma\x1b[0m\u202Eb"_s + nul + u"\n\tc\r\n"_s),
             u"a\uFFFDb␀\n\tc\n"_s);
}

void TerminalTextTest::leavesOutTheMiddleBeforeAnythingElse() {
    constexpr qsizetype most = 2'200'000;
    const QString text = u"\x1b[1mfirst\n"_s + QString(8'000'000, u'x') + u"\nlast\x1b[0m"_s;
    const QString shown = DisplayText::transcript(text);
    QVERIFY(shown.size() < most);
    QVERIFY(shown.startsWith(u"first\nxxx"_s));
    QVERIFY(shown.endsWith(u"xxx\nlast"_s));
}

QTEST_GUILESS_MAIN(TerminalTextTest)
#include "tst_terminaltext.moc"
