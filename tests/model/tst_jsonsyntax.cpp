// SPDX-License-Identifier: MIT
#include "Decoding.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class JsonSyntaxTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void namesThePlaceOfAnError_data();
    void namesThePlaceOfAnError();
    void isStricterThanThePlaceFinder_data();
    void isStricterThanThePlaceFinder();
    void countsLevels_data();
    void countsLevels();
    void tellsThatThereIsNothing_data();
    void tellsThatThereIsNothing();
};

void JsonSyntaxTest::namesThePlaceOfAnError_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, const QByteArray& json, const QString& error) {
        QTest::newRow(name) << json << error;
    };

    // Noise around the report.
    row("greeting", "Welcome back!\n{}",
        u"line 1, column 1: illegal value near \"Welcome back!\""_s);
    row("greeting after a blank line", "\n  => Checking %1\r\n{}",
        u"line 2, column 3: illegal value near \"=> Checking %1\""_s);
    row("escape sequence of a terminal", "\x1B[1mHello\n{}",
        u"line 1, column 1: illegal value near \"[1mHello\""_s);
    row("farewell", "{}\nBye!\n",
        u"line 2, column 1: garbage at the end of the document near \"Bye!\""_s);
    row("byte order mark", "\xEF\xBB\xBF{\"formulae\": [], \"casks\": []}",
        u"line 1, column 1: expected object, found a byte order mark"_s);

    // Documents cut short.
    row("after a bracket", "{", u"line 1, column 1: unterminated object near \"{\""_s);
    row("after a comma", "{\"name\": 1,\n",
        u"line 2, column 1: unterminated object near the end"_s);
    row("inside a text", "{\n  \"na", u"line 2, column 5: unterminated string near \"\"na\""_s);

    // Slips; columns count characters, not bytes.
    row("trailing comma", "[1, ]",
        u"line 1, column 5: object is missing after a comma near \"[1, ]\""_s);
    row("missing comma", "[1\n 2]", u"line 2, column 2: missing value separator near \"2]\""_s);
    row("missing colon", R"({"é한🍺" 1})",
        uR"(line 1, column 9: missing name separator near "{"é한🍺" 1}")"_s);
    row("brackets that don't match", "[\n\n[1}",
        u"line 3, column 3: unterminated array near \"[1}\""_s);
    row("leading zero", "[01]", u"line 1, column 3: missing value separator near \"[01]\""_s);
    row("two exponents", "[1e999e5]", u"line 1, column 6: illegal number near \"[1e999e5]\""_s);

    // No more of a line than one can read.
    row("long line", QByteArray(100, ' ') + "y" + QByteArray(100, 'z'),
        u"line 1, column 101: illegal value near \"y"_s + QString(20, u'z') + u'"');
    const QByteArray beer = "🍺";
    row("pairs at both ends", "[\"" + beer.repeated(30) + "\" 1  \"" + beer.repeated(30) + "\"]",
        u"line 1, column 67: missing value separator near \""_s + u"🍺"_s.repeated(7) +
            u"\" 1  \""_s + u"🍺"_s.repeated(9) + u'"');
    row("upsetting characters", "x\ty\x7Fz\u202Ew",
        u"line 1, column 1: illegal value near \"x y z w\""_s);
}

void JsonSyntaxTest::namesThePlaceOfAnError() {
    QFETCH(QByteArray, json);
    QFETCH(QString, error);
    QCOMPARE(decodingError<BrewListResponse>(json), error);
}

void JsonSyntaxTest::isStricterThanThePlaceFinder_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("no digit before the point") << QByteArray("[.5]");
    QTest::newRow("no digit behind the point") << QByteArray("[5.]");
    QTest::newRow("raw line break") << QByteArray("[\"a\n\"]");
    QTest::newRow("raw NUL") << QByteArray("[\"a\0\"]", 6);
    QTest::newRow("unknown escape") << QByteArray(R"(["\x41"])");
    QTest::newRow("lone high surrogate") << QByteArray(R"(["\ud800"])");
    QTest::newRow("lone low surrogate") << QByteArray(R"(["\uDC00"])");
}

void JsonSyntaxTest::isStricterThanThePlaceFinder() {
    QFETCH(QByteArray, json);
    const QByteArray report = R"({"formulae": [], "casks": [], "x": )" + json + '}';
    const QString error = decodingError<BrewListResponse>(report);
    QVERIFY2(error.startsWith(u"the report: "), qPrintable(error));
    QVERIFY(error.size() > 20);
}

void JsonSyntaxTest::countsLevels_data() {
    QTest::addColumn<int>("levels");
    QTest::addColumn<bool>("isSound");
    QTest::newRow("1024") << 1024 << true;
    QTest::newRow("1025") << 1025 << false;
    QTest::newRow("a million") << 1'000'000 << false;
}

void JsonSyntaxTest::countsLevels() {
    QFETCH(int, levels);
    QFETCH(bool, isSound);
    const QByteArray json = R"({"formulae": [], "casks": [], "x": )" + QByteArray(levels - 1, '[') +
                            QByteArray(levels - 1, ']') + '}';
    QCOMPARE(decodingError<BrewListResponse>(json).isNull(), isSound);
    // Never closed, it isn't accepted either way.
    QVERIFY(!decodingError<BrewListResponse>(json.chopped(1)).isEmpty());
}

void JsonSyntaxTest::tellsThatThereIsNothing_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("blank") << QByteArray(" \r\n\t\n");
}

void JsonSyntaxTest::tellsThatThereIsNothing() {
    QFETCH(QByteArray, json);
    QCOMPARE(decodingError<OutdatedResponse>(json),
             u"the report is empty or not valid UTF-8: expected object, found nothing"_s);
    // The other way not to be text.
    QCOMPARE(decodingError<OutdatedResponse>(json + "{\"caf\xE9\": 1}"),
             u"the report: expected valid UTF-8, found other bytes"_s);
}

QTEST_GUILESS_MAIN(JsonSyntaxTest)
#include "tst_jsonsyntax.moc"
