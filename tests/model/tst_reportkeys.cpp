// SPDX-License-Identifier: MIT
#include "Decoding.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace Qt::StringLiterals;

/// What stands under every key of every record, and what is said of anything else there.
class ReportKeysTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void holdsEveryKeyToItsKind_data();
    void holdsEveryKeyToItsKind();
    void namesThePlaceOfAMismatch_data();
    void namesThePlaceOfAMismatch();
};

namespace {

/// A report with one record in it, which `record` describes.
struct Frame {
    QByteArray before;
    QJsonObject record;
    QByteArray behind;
    QString place;
    QString (*error)(const QByteArray& json);

    [[nodiscard]] QByteArray around(const QJsonObject& object) const {
        return before + QJsonDocument(object).toJson(QJsonDocument::Compact) + behind;
    }
};

const QByteArray formulaBefore = R"({"formulae": [)";
const QByteArray formulaBehind = R"(], "casks": []})";
const QByteArray caskBefore = R"({"formulae": [], "casks": [)";
const QByteArray caskBehind = "]}";

QMap<QByteArray, Frame> frames() {
    return {
        {"installed",
         {{},
          {{u"formulae"_s, QJsonArray()}, {u"casks"_s, QJsonArray()}},
          {},
          {},
          decodingError<BrewListResponse>}},
        {"formula",
         {formulaBefore,
          {{u"name"_s, u"a"_s}},
          formulaBehind,
          u"formulae[0]."_s,
          decodingError<BrewListResponse>}},
        {"versions",
         {formulaBefore + R"({"name": "a", "versions": )",
          {},
          "}" + formulaBehind,
          u"formulae[0].versions."_s,
          decodingError<BrewListResponse>}},
        {"keg",
         {formulaBefore + R"({"name": "a", "installed": [{"version": "1"}, )",
          {{u"version"_s, u"2"_s}},
          "]}" + formulaBehind,
          u"formulae[0].installed[1]."_s,
          decodingError<BrewListResponse>}},
        {"cask",
         {caskBefore + R"({"token": "a"}, )",
          {{u"token"_s, u"b"_s}},
          caskBehind,
          u"casks[1]."_s,
          decodingError<BrewListResponse>}},
        {"named", {{}, {}, {}, {}, decodingError<BrewInfoResponse>}},
        {"outdated",
         {{},
          {{u"formulae"_s, QJsonArray()}, {u"casks"_s, QJsonArray()}},
          {},
          {},
          decodingError<OutdatedResponse>}},
        {"outdated formula",
         {formulaBefore,
          {{u"name"_s, u"a"_s},
           {u"installed_versions"_s, QJsonArray()},
           {u"current_version"_s, u"2"_s}},
          formulaBehind,
          u"formulae[0]."_s,
          decodingError<OutdatedResponse>}},
        {"outdated cask",
         {caskBefore,
          {{u"name"_s, u"a"_s}, {u"installed_versions"_s, u"1"_s}, {u"current_version"_s, u"2"_s}},
          caskBehind,
          u"casks[0]."_s,
          decodingError<OutdatedResponse>}},
    };
}

QList<std::pair<QString, QJsonValue>> valuesOfEveryKind() {
    return {
        {u"text"_s, u"x"_s},       {u"text"_s, u""_s},        {u"truth value"_s, true},
        {u"truth value"_s, false}, {u"number"_s, 0},          {u"number"_s, 1},
        {u"number"_s, 7},          {u"number"_s, -0.5},       {u"text"_s, u"true"_s},
        {u"text"_s, u"1"_s},       {u"list"_s, QJsonArray()}, {u"object"_s, QJsonObject()},
    };
}

} // namespace

void ReportKeysTest::holdsEveryKeyToItsKind_data() {
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("isRequired");

    struct Line {
        const char* record;
        const char* key;
        const char* kind;
        bool isRequired;
    };

    constexpr bool required = true;
    constexpr bool optional = false;
    constexpr std::array table{
        Line{"installed", "formulae", "list", required},
        Line{"installed", "casks", "list", required},
        Line{"formula", "name", "text", required},
        Line{"formula", "full_name", "text", optional},
        Line{"formula", "desc", "text", optional},
        Line{"formula", "homepage", "text", optional},
        Line{"formula", "versions", "object", optional},
        Line{"formula", "installed", "list", optional},
        Line{"formula", "outdated", "truth value", optional},
        Line{"formula", "dependencies", "list", optional},
        Line{"versions", "stable", "text", optional},
        Line{"versions", "head", "text", optional},
        Line{"keg", "version", "text", required},
        Line{"keg", "installed_on_request", "truth value", optional},
        Line{"keg", "installed_as_dependency", "truth value", optional},
        Line{"cask", "token", "text", required},
        Line{"cask", "full_token", "text", optional},
        Line{"cask", "name", "list", optional},
        Line{"cask", "desc", "text", optional},
        Line{"cask", "homepage", "text", optional},
        Line{"cask", "version", "text", optional},
        Line{"cask", "installed", "text", optional},
        Line{"cask", "outdated", "truth value", optional},
        Line{"named", "formulae", "list", optional},
        Line{"named", "casks", "list", optional},
        Line{"outdated", "formulae", "list", required},
        Line{"outdated", "casks", "list", required},
        Line{"outdated formula", "name", "text", required},
        Line{"outdated formula", "installed_versions", "list", required},
        Line{"outdated formula", "current_version", "text", required},
        Line{"outdated formula", "pinned", "truth value", optional},
        Line{"outdated cask", "name", "text", required},
        Line{"outdated cask", "installed_versions", "text", required},
        Line{"outdated cask", "current_version", "text", required},
    };
    for (const Line& line : table)
        QTest::addRow("%s, %s", line.record, line.key)
            << QByteArray(line.record) << QString::fromLatin1(line.key)
            << QString::fromLatin1(line.kind) << line.isRequired;
}

void ReportKeysTest::holdsEveryKeyToItsKind() {
    QFETCH(QByteArray, record);
    QFETCH(QString, key);
    QFETCH(QString, kind);
    QFETCH(bool, isRequired);
    const Frame frame = frames().value(record);
    const QString refused = frame.place + key + u": expected "_s + kind + u", found "_s;
    const auto errorWith = [&](const QJsonValue& value) {
        QJsonObject object = frame.record;
        object[key] = value;
        return frame.error(frame.around(object));
    };

    QJsonObject without = frame.record;
    without.remove(key);
    QCOMPARE(frame.error(frame.around(without)), isRequired ? refused + u"nothing"_s : QString());
    QJsonObject inCapitals = without;
    inCapitals[key.toUpper()] = QJsonArray{7};
    QCOMPARE(frame.error(frame.around(inCapitals)),
             isRequired ? refused + u"nothing"_s : QString());
    QCOMPARE(errorWith(QJsonValue::Null), isRequired ? refused + u"null"_s : QString());
    for (const auto& [found, value] : valuesOfEveryKind())
        QCOMPARE(errorWith(value), found == kind ? QString() : refused + found);
}

void ReportKeysTest::namesThePlaceOfAMismatch_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("error");

    QTest::newRow("a list") << QByteArray("[]") << u"the report: expected object, found list"_s;
    QTest::newRow("a text") << QByteArray("\"x\"") << u"the report: expected object, found text"_s;
    QTest::newRow("a number") << QByteArray("3") << u"the report: expected object, found number"_s;
    QTest::newRow("null") << QByteArray("null") << u"the report: expected object, found null"_s;
    QTest::newRow("true") << QByteArray("true")
                          << u"the report: expected object, found truth value"_s;
    QTest::newRow("empty object") << QByteArray("{}")
                                  << u"formulae: expected list, found nothing"_s;
    QTest::newRow("no casks") << QByteArray(R"({"formulae": []})")
                              << u"casks: expected list, found nothing"_s;
    QTest::newRow("the first of several")
        << QByteArray(R"({"casks": 1, "formulae": 2})") << u"casks: expected list, found number"_s;
    QTest::newRow("an item") << QByteArray(R"({"formulae": [{"name": "a"}, 7], "casks": []})")
                             << u"formulae[1]: expected object, found number"_s;
    QTest::newRow("far down the list")
        << R"({"formulae": [], "casks": [)" + QByteArray(R"({"token": "a"},)").repeated(1234) +
               R"({"token": "a", "name": ["b", "c", {}]}]})"
        << u"casks[1234].name[2]: expected text, found object"_s;
    QTest::newRow("a dependency") << formulaBefore +
                                         R"({"name": "a", "dependencies": ["b", null]})" +
                                         formulaBehind
                                  << u"formulae[0].dependencies[1]: expected text, found null"_s;
    QTest::newRow("inside a keg")
        << formulaBefore + R"({"name": "a", "installed": [{"version": "1"}, {"version": 2}]})" +
               formulaBehind
        << u"formulae[0].installed[1].version: expected text, found number"_s;
    QTest::newRow("one name for a cask")
        << caskBefore + R"({"token": "a", "name": "A"})" + caskBehind
        << u"casks[0].name: expected list, found text"_s;
    QTest::newRow("a huge number where a text belongs")
        << formulaBefore + R"({"name": 123456789012345678901234567890})" + formulaBehind
        << u"formulae[0].name: expected text, found number"_s;
}

void ReportKeysTest::namesThePlaceOfAMismatch() {
    QFETCH(QByteArray, json);
    QFETCH(QString, error);
    QCOMPARE(decodingError<BrewListResponse>(json), error);
}

QTEST_GUILESS_MAIN(ReportKeysTest)
#include "tst_reportkeys.moc"
