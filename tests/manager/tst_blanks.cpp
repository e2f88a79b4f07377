// SPDX-License-Identifier: MIT
#include "Blanks.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class BlanksTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void trimsBlanksAtBothEnds_data();
    void trimsBlanksAtBothEnds();
};

void BlanksTest::trimsBlanksAtBothEnds_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("trimmed");
    QTest::newRow("nothing to trim") << u"a b"_s << u"a b"_s;
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("spaces and tabs") << u" \t a \t b \t "_s << u"a \t b"_s;
    QTest::newRow("nothing but blanks") << u" \t\u00a0\u1680\u2003\u202f\u205f\u3000"_s << u""_s;
    QTest::newRow("no-break space") << u"\u00a0a\u00a0"_s << u"a"_s;
    QTest::newRow("ideographic space") << u"\u3000a\u3000"_s << u"a"_s;
    QTest::newRow("start only") << u"  a"_s << u"a"_s;
    QTest::newRow("end only") << u"a  "_s << u"a"_s;
    QTest::newRow("line ends") << u" \na\r\n "_s << u"\na\r\n"_s;
    QTest::newRow("other line ends") << u"\u2028a\u2029\u0085"_s << u"\u2028a\u2029\u0085"_s;
    QTest::newRow("zero width") << u"\u200ba\ufeff"_s << u"\u200ba\ufeff"_s;
}

void BlanksTest::trimsBlanksAtBothEnds() {
    QFETCH(QString, text);
    QFETCH(QString, trimmed);
    QCOMPARE(trimmedOfBlanks(text).toString(), trimmed);
}

QTEST_GUILESS_MAIN(BlanksTest)
#include "tst_blanks.moc"
