// SPDX-License-Identifier: MIT
#include "Pixels.h"
#include "UiTest.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/OutputText.h"

#include <QTextBlock>
#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int width = 300;
constexpr int padding = 8;
constexpr int pitch = 17;
constexpr int tallest = 6'000;

constexpr qsizetype heightOf(qsizetype rows) {
    return rows * pitch + 2 * padding + 1;
}

OutputText* makeOutput(const QString& output) {
    auto* const text = new OutputText(u"Output"_s, OutputText::Frame::Box, Typography::caption);
    text->resize(width, 10);
    text->show();
    text->setOutput(output);
    return text;
}

} // namespace

class OutputTextTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void spacesItsLines();
    void isAsTallAsItsTextUntilItScrolls_data();
    void isAsTallAsItsTextUntilItScrolls();
    void laysOutNothingToFindThatItScrolls();
};

void OutputTextTest::spacesItsLines() {
    const std::unique_ptr<OutputText> shown(
        makeOutput(u"xx\nxx\n"_s + u"xx "_s.repeated(60) + u"\nxx"_s));
    OutputText& text = *shown;
    text.resize(width, text.height());
    const QImage image = text.grab().toImage();
    // Wherever letters begin: also in a line that was wrapped.
    QList<int> tops;
    bool wasEmpty = true;
    for (int y = 1; y < image.height() - 1; ++y) {
        bool isEmpty = true;
        for (int x = 8; x < 18 && isEmpty; ++x)
            isEmpty = Pixels::areAlike(image.pixelColor(x, y), Theme::light().output, 20);
        if (wasEmpty && !isEmpty)
            tops.append(y);
        wasEmpty = isEmpty;
    }
    QVERIFY(tops.size() > 5);
    for (qsizetype i = 1; i < tops.size(); ++i)
        QCOMPARE(tops.at(i) - tops.at(i - 1), pitch);
    // All of it can be seen, and found by the pointer.
    QCOMPARE(text.height(), heightOf(tops.size()));
    QCOMPARE(text.cursorForPosition({0, tops.at(1) + 2}).blockNumber(), 1);
    QCOMPARE(text.cursorForPosition({0, tops.constLast() + 2}).blockNumber(), 3);
}

void OutputTextTest::isAsTallAsItsTextUntilItScrolls_data() {
    QTest::addColumn<QString>("output");
    QTest::addColumn<qsizetype>("height");
    constexpr qsizetype mostRows = (tallest - heightOf(0) + 1) / pitch;
    const QFontMetricsF metrics(Typography::monospace(Typography::caption));
    const auto lettersOfARow =
        static_cast<qsizetype>((width - 2 * padding) / metrics.horizontalAdvance(u'x'));
    // One more than a row has place for begins another.
    const QString row(lettersOfARow, u'x');
    const QString twoRows = row + u" x\n"_s;
    QTest::newRow("lines that fit") << u"x\n"_s.repeated(mostRows) << heightOf(mostRows);
    QTest::newRow("a line too many") << u"x\n"_s.repeated(mostRows + 1) << qsizetype{tallest};
    QTest::newRow("full rows that fit") << (row + u'\n').repeated(mostRows) << heightOf(mostRows);
    QTest::newRow("wrapped lines that fit")
        << twoRows.repeated(mostRows / 2) << heightOf(mostRows / 2 * 2);
    QTest::newRow("a wrapped line too many")
        << twoRows.repeated(mostRows / 2 + 1) << qsizetype{tallest};
    QTest::newRow("letters without an end") << QString(100'000, u'x') << qsizetype{tallest};
    constexpr qsizetype count = 50;
    const QString blanks(2'000, u' ');
    QTest::newRow("blanks hang over the end of a row")
        << (u'x' + blanks + u'\n').repeated(count) << heightOf(count);
    const QString marks(900, u'\u0301');
    QTest::newRow("marks stand above a letter")
        << (u'x' + marks + u'\n').repeated(count) << heightOf(count);
}

void OutputTextTest::isAsTallAsItsTextUntilItScrolls() {
    QFETCH(QString, output);
    QFETCH(qsizetype, height);
    const std::unique_ptr<OutputText> text(makeOutput(output));
    QCOMPARE(text->height(), height);
    QCOMPARE(text->verticalScrollBarPolicy(),
             height == tallest ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
}

void OutputTextTest::laysOutNothingToFindThatItScrolls() {
    const std::unique_ptr<OutputText> text(makeOutput(QString(100'000, u'x')));
    QCOMPARE(text->height(), tallest);
    // Its first line is: the cursor stands there.
    QCOMPARE(text->document()->findBlockByNumber(1).layout()->lineCount(), 0);
}

LUMORA_UI_TEST_MAIN(OutputTextTest)
#include "tst_outputtext.moc"
