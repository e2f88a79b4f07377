// SPDX-License-Identifier: MIT
#include "OperationReport.h"
#include "shell/OperationSummary.h"

#include <QTest>

using namespace Qt::StringLiterals;

class OperationSummaryTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tellsOfAFailure_data();
    void tellsOfAFailure();
    void findsTheReasonInWhateverIsWritten_data();
    void findsTheReasonInWhateverIsWritten();
    void tellsOfASuccess_data();
    void tellsOfASuccess();
    void isOfOneLineEach();
};

namespace {

OperationReport report(bool succeeded, const QString& start, const QString& printed,
                       const QString& closing) {
    const QString end = closing.isEmpty() ? QString() : u'\n' + closing;
    return {.succeeded = succeeded,
            .start = start,
            .closing = closing,
            .transcript = start + u'\n' + printed + end};
}

} // namespace

void OperationSummaryTest::tellsOfAFailure_data() {
    QTest::addColumn<QString>("closing");
    QTest::addColumn<QString>("printed");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("reason");
    const QString closing = u"Failed to install wget"_s;
    const QString start = u"Installing wget..."_s;
    QTest::newRow("brew's reason")
        << closing << u"==> Pouring\n\nError: no room\n"_s << closing << u"Error: no room"_s;
    QTest::newRow("the first of two")
        << closing << u"Error: one\nError: two\n"_s << closing << u"Error: one"_s;
    QTest::newRow("no reason") << closing << u"Warning: Error: this is none\n Error: nor this\n"_s
                               << closing << u""_s;
    QTest::newRow("in colour") << closing << u"\x1b[31mError:\x1b[0m no room\n"_s << closing
                               << u"Error: no room"_s;
    QTest::newRow("behind progress")
        << closing << u"10%\r50%\rError: broken\n"_s << closing << u"Error: broken"_s;
    QTest::newRow("without a line's end")
        << closing << u"Error: no room"_s << closing << u"Error: no room"_s;
    QTest::newRow("nothing printed") << closing << u""_s << closing << u""_s;
    QTest::newRow("a tap") << u""_s << u"\nError: Invalid tap name\n"_s
                           << u"Error: Invalid tap name"_s << u""_s;
    QTest::newRow("a tap without a reason") << u""_s << u"fatal: gone\n"_s << start << u""_s;
    QTest::newRow("markup and marks") << closing << u"Error: <b>a\u202Eb</b> &amp;\n"_s << closing
                                      << u"Error: <b>a\uFFFDb</b> &amp;"_s;
}

void OperationSummaryTest::tellsOfAFailure() {
    QFETCH(QString, closing);
    QFETCH(QString, printed);
    QFETCH(QString, title);
    QFETCH(QString, reason);
    const OperationSummary summary(report(false, u"Installing wget..."_s, printed, closing));
    QVERIFY(!summary.succeeded);
    QCOMPARE(summary.title, title);
    QCOMPARE(summary.reason, reason);
    QCOMPARE(summary.line(), reason.isEmpty() ? title : title + u" — "_s + reason);
}

void OperationSummaryTest::findsTheReasonInWhateverIsWritten_data() {
    QTest::addColumn<QString>("printed");
    QTest::addColumn<QString>("reason");
    const QString much = u"warning: something is odd\n"_s.repeated(200'000);
    QTest::newRow("before megabytes")
        << u"Error: early\n"_s + much + u"Error: late\n"_s << u"Error: early"_s;
    QTest::newRow("between megabytes") << much + u"Error: here\n"_s + much << u"Error: here"_s;
    QTest::newRow("behind a line of megabytes")
        << QString(5'000'000, u'x') + u"\nError: here\n"_s << u"Error: here"_s;
    QTest::newRow("in the middle of a line") << QString(4096, u'x') + u"Error: none\n"_s << u""_s;
    QTest::newRow("thousands in a line") << u" Error: none"_s.repeated(200'000) << u""_s;
}

void OperationSummaryTest::findsTheReasonInWhateverIsWritten() {
    QFETCH(QString, printed);
    QFETCH(QString, reason);
    const OperationSummary summary(
        report(false, u"Upgrading all packages..."_s, printed, u"Upgrade failed"_s));
    QCOMPARE(summary.reason, reason);
}

void OperationSummaryTest::tellsOfASuccess_data() {
    QTest::addColumn<QString>("closing");
    QTest::addColumn<QString>("printed");
    QTest::addColumn<QString>("title");
    const QString closing = u"Successfully installed wget"_s;
    QTest::newRow("the closing text") << closing << u"==> Caveats\nError: was none\n"_s << closing;
    QTest::newRow("a tap") << u""_s << u"Cloning\nTapped 2 commands (15 files).\n\n"_s
                           << u"Tapped 2 commands (15 files)."_s;
    QTest::newRow("a rule below the words") << u""_s << u"Tapped.\n=====\n \n"_s << u"Tapped."_s;
    QTest::newRow("words of another script") << u""_s << u"완료\n--\n"_s << u"완료"_s;
    QTest::newRow("nothing printed") << u""_s << u""_s << u"Adding tap a/b..."_s;
    QTest::newRow("in colour") << u""_s << u"\x1b[32mTapped\x1b[0m 1\n"_s << u"Tapped 1"_s;
}

void OperationSummaryTest::tellsOfASuccess() {
    QFETCH(QString, closing);
    QFETCH(QString, printed);
    QFETCH(QString, title);
    const OperationSummary summary(report(true, u"Adding tap a/b..."_s, printed, closing));
    QVERIFY(summary.succeeded);
    QCOMPARE(summary.title, title);
    QCOMPARE(summary.reason, QString());
    QCOMPARE(summary.line(), title);
}

void OperationSummaryTest::isOfOneLineEach() {
    const QString name = u"a\nb\tc"_s + QString(1'000'000, u'x');
    const OperationSummary summary(report(false, u"Installing "_s + name, u"Error: "_s + name,
                                          u"Failed to install "_s + name));
    for (const QString& line : {summary.title, summary.line()}) {
        QVERIFY(!line.contains(u'\n'));
        QVERIFY(line.size() < 10'000);
    }
    QVERIFY(summary.transcript.size() <= 3'000'000);
}

QTEST_GUILESS_MAIN(OperationSummaryTest)
#include "tst_operationsummary.moc"
