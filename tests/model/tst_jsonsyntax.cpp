// SPDX-License-Identifier: MIT
#include "Decoding.h"
#include "JsonSyntax.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class JsonSyntaxTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void namesThePlaceOfAnError_data();
    void namesThePlaceOfAnError();
    void acceptsWhatIsSound_data();
    void acceptsWhatIsSound();
    void countsLevels_data();
    void countsLevels();
    void tellsThatThereIsNothing_data();
    void tellsThatThereIsNothing();
};

namespace {

/// The error as the user sees it; null if the text is JSON.
QString syntaxError(const QByteArray& json) {
    const std::string text = json.toStdString();
    const auto error = JsonSyntaxError::find(text);
    return error ? error->description(text) : QString();
}

} // namespace

void JsonSyntaxTest::namesThePlaceOfAnError_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, const QByteArray& json, const QString& error) {
        QTest::newRow(name) << json << error;
    };

    // Noise around the report.
    row("greeting", "Welcome back!\n{}",
        u"line 1, column 1: expected a value, found \"Welcome back!\""_s);
    row("greeting after a blank line", "\n  => Checking %1\r\n{}",
        u"line 2, column 3: expected a value, found \"=> Checking %1\""_s);
    row("greeting that starts like JSON", "12 new mails\n{}",
        u"line 1, column 4: expected the end of the report, found \"new mails\""_s);
    row("escape sequence of a terminal", "\x1B[1mHello\n{}",
        u"line 1, column 1: expected a value, found a control character"_s);
    row("farewell", "{}\nBye!\n",
        u"line 2, column 1: expected the end of the report, found \"Bye!\""_s);
    row("second document", "{}\n\n[]",
        u"line 3, column 1: expected the end of the report, found \"[]\""_s);
    row("byte order mark", "\xEF\xBB\xBF{}",
        u"line 1, column 1: expected a value, found a byte order mark"_s);
    row("long line", "x" + QByteArray(100, 'y'),
        u"line 1, column 1: expected a value, found \"x"_s + QString(39, u'y') + u"…\""_s);
    row("long line of pairs", "x" + QByteArray("🍺").repeated(60),
        u"line 1, column 1: expected a value, found \"x"_s + u"🍺"_s.repeated(19) + u"…\""_s);
    row("upsetting characters", "x\ty\x7Fz\u202Ew",
        u"line 1, column 1: expected a value, found \"x y z w\""_s);

    // Documents cut short.
    row("after a bracket", "{",
        u"line 1, column 2: expected a key in double quotes, found the end"_s);
    row("inside a key", "{\n  \"na",
        u"line 2, column 6: expected the closing quote, found the end"_s);
    row("after a key", "{\"name\"", uR"(line 1, column 8: expected ":", found the end)"_s);
    row("after a colon", "{\"name\": ", u"line 1, column 10: expected a value, found the end"_s);
    row("after a value", "{\"name\": 1",
        uR"(line 1, column 11: expected "," or "}", found the end)"_s);
    row("after a comma", "{\"name\": 1,\n",
        u"line 2, column 1: expected a key in double quotes, found the end"_s);
    row("inside a list", "[1", uR"(line 1, column 3: expected "," or "]", found the end)"_s);
    row("inside a literal", "[tru", u"line 1, column 2: expected a value, found \"tru\""_s);
    row("inside a number", "[-", u"line 1, column 3: expected a digit, found the end"_s);
    row("inside an escape", R"(["\u00)",
        uR"(line 1, column 3: expected an escape sequence, found "\u00")"_s);
    row("after a backslash", R"(["\)",
        uR"(line 1, column 3: expected an escape sequence, found "\")"_s);

    // Slips of structure.
    row("trailing comma in an object", R"({"a": 1,})",
        u"line 1, column 9: expected a key in double quotes, found \"}\""_s);
    row("trailing comma in a list", "[1, ]", u"line 1, column 5: expected a value, found \"]\""_s);
    row("leading comma", "[,1]", u"line 1, column 2: expected a value, found \",1]\""_s);
    row("missing comma", "[1\n 2]", uR"(line 2, column 2: expected "," or "]", found "2]")"_s);
    row("missing colon", R"({"a" 1})", uR"(line 1, column 6: expected ":", found "1}")"_s);
    row("missing value", R"({"a":})", u"line 1, column 6: expected a value, found \"}\""_s);
    row("key without quotes", "{a: 1}",
        u"line 1, column 2: expected a key in double quotes, found \"a: 1}\""_s);
    row("key that is a number", "{1: 1}",
        u"line 1, column 2: expected a key in double quotes, found \"1: 1}\""_s);
    row("brackets that don't match", "[1}",
        uR"(line 1, column 3: expected "," or "]", found "}")"_s);
    row("one bracket too many", "[]]",
        u"line 1, column 3: expected the end of the report, found \"]\""_s);
    row("comment", "[1 /* one */]",
        uR"(line 1, column 4: expected "," or "]", found "/* one */]")"_s);

    // Values.
    row("capital", "[True]", u"line 1, column 2: expected a value, found \"True]\""_s);
    row("not a number", "[NaN]", u"line 1, column 2: expected a value, found \"NaN]\""_s);
    row("plus sign", "[+1]", u"line 1, column 2: expected a value, found \"+1]\""_s);
    row("leading zero", "[01]", uR"(line 1, column 3: expected "," or "]", found "1]")"_s);
    row("no digit before the point", "[.5]",
        u"line 1, column 2: expected a value, found \".5]\""_s);
    row("no digit behind the point", "[5.]", u"line 1, column 4: expected a digit, found \"]\""_s);
    row("no exponent", "[5e+\n]", u"line 1, column 5: expected a digit, found a line break"_s);
    row("hexadecimal", "[0x1F]", uR"(line 1, column 3: expected "," or "]", found "x1F]")"_s);

    // Text; columns count characters, not bytes.
    row("single quotes", "['a']", u"line 1, column 2: expected a value, found \"'a']\""_s);
    row("raw line break", "[\"é한🍺\n\"]",
        u"line 1, column 6: expected an escaped control character, found a line break"_s);
    row("raw NUL", QByteArray("[\"a\0\"]", 6),
        u"line 1, column 4: expected an escaped control character, found a control character"_s);
    row("unknown escape", R"(["\x41"])",
        uR"(line 1, column 3: expected an escape sequence, found "\x41"]")"_s);
    row("escape of too few digits", R"(["\u12G4"])",
        uR"(line 1, column 3: expected an escape sequence, found "\u12G4"]")"_s);
    row("lone high surrogate", R"(["\ud800"])",
        uR"(line 1, column 3: expected both halves of a surrogate pair, found "\ud800"]")"_s);
    row("lone low surrogate", R"(["\uDC00"])",
        uR"(line 1, column 3: expected both halves of a surrogate pair, found "\uDC00"]")"_s);
    row("two low surrogates", R"(["\uDC00\uDC00"])",
        uR"(line 1, column 3: expected both halves of a surrogate pair, found "\uDC00\uDC00"]")"_s);
    row("two high surrogates", R"(["\ud800\ud800"])",
        uR"(line 1, column 3: expected both halves of a surrogate pair, found "\ud800\ud800"]")"_s);
}

void JsonSyntaxTest::namesThePlaceOfAnError() {
    QFETCH(QByteArray, json);
    QFETCH(QString, error);
    QCOMPARE(syntaxError(json), error);
    // The strict parser refuses it as well, and the user sees this very message.
    QCOMPARE(decodingError<BrewListResponse>(json), error);
}

void JsonSyntaxTest::acceptsWhatIsSound_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("blanks everywhere")
        << QByteArray(" \t\r\n{ \"a\" : [ ] , \"b\" : { } , \"c\" : [ 1 , 2 ] } \n");
    QTest::newRow("no blanks") << QByteArray(R"({"a":[],"b":{},"c":[[],{}],"a":{"":""}})");
    QTest::newRow("literals") << QByteArray("[true,false,null]");
    QTest::newRow("numbers") << QByteArray("[0,-0,10,-1.50,1e5,1E-05,0.1e+10,9e99999]");
    QTest::newRow("escapes") << QByteArray(
        R"(["\"\\\/\b\f\n\r\t\u0000\uFFFF\ud83C\uDf7a\uD7FF\uE000"])");
    QTest::newRow("text") << QByteArray("[\"é 한 🍺 \x7F ' // {\"]");
    QTest::newRow("a text alone") << QByteArray("\"a\"");
    QTest::newRow("a number alone") << QByteArray("-1");
}

void JsonSyntaxTest::acceptsWhatIsSound() {
    QFETCH(QByteArray, json);
    QCOMPARE(syntaxError(json), QString());
    // Whatever the decoder has against it then is its content.
    QVERIFY(!decodingError<BrewListResponse>(json).startsWith(u"line"));
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
    QCOMPARE(syntaxError(json).isNull(), isSound);
    QCOMPARE(decodingError<BrewListResponse>(json), syntaxError(json));
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
