// SPDX-License-Identifier: MIT
#include "Decoding.h"
#include "SampleReports.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace Qt::StringLiterals;

class JsonReportTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void decodesTheInstalledPackages();
    void decodesTheOutdatedPackages();
    void decodesEmptyLists();
    void refusesTheListFormOfACasksVersions();
    void leavesBothListsOfNamedPackagesOpen();
    void ignoresUnknownKeys_data();
    void ignoresUnknownKeys();
    void takesTheLastOfDuplicateKeys();
    void keepsTextAsItIs_data();
    void keepsTextAsItIs();
    void makesTextsThatAreAlikeOnce();
    void keepsManyTextsApart();
    void decodesWithAndWithoutSpareCapacity();
    void encodesWhatItDecodes();
    void encodesRequiredKeysAlwaysAndAbsentOnesNever();
};

namespace {

const QByteArray formulaBefore = R"({"formulae": [)";
const QByteArray formulaBehind = R"(], "casks": []})";

QJsonObject parsed(const QByteArray& json) {
    return QJsonDocument::fromJson(json).object();
}

} // namespace

void JsonReportTest::decodesTheInstalledPackages() {
    const FormulaJSON teapot{
        .name = u"teapot"_s,
        .fullName = u"kitchen/tools/teapot"_s,
        .desc = u"Short, \"stout\" & 100 % ☕ 한국어"_s,
        .homepage = u"https://teapot.example/"_s,
        .versions = FormulaVersions{.stable = u"2.10.1_3"_s, .head = u"HEAD"_s},
        .installed =
            QList<FormulaInstalled>{
                {.version = u"2.9"_s, .installedOnRequest = false, .installedAsDependency = true},
                {.version = u"2.10.1_3"_s,
                 .installedOnRequest = true,
                 .installedAsDependency = false}},
        .outdated = true,
        .dependencies = QStringList{u"handle"_s, u"spout@3"_s, u"lid"_s},
    };
    const FormulaJSON spoon{
        .name = u"spoon"_s,
        .fullName = {},
        .desc = {},
        .homepage = {},
        .versions = FormulaVersions{},
        .installed = QList<FormulaInstalled>{},
        .outdated = false,
        .dependencies = {},
    };
    const CaskJSON cupboard{
        .token = u"cupboard"_s,
        .fullToken = u"kitchen/room/cupboard"_s,
        .name = QStringList{u"Cupboard"_s, u"식기장"_s},
        .desc = u"Keeps cups"_s,
        .homepage = u"https://cupboard.example/?a=1&b=2"_s,
        .version = u"3.2,21"_s,
        .installed = u"3.1,20"_s,
        .outdated = true,
    };
    const CaskJSON font{
        .token = u"font-tea"_s,
        .fullToken = {},
        .name = QStringList{},
        .desc = {},
        .homepage = {},
        .version = {},
        .installed = {},
        .outdated = {},
    };
    const auto report = decoded<BrewListResponse>(installedReport);
    QVERIFY(report.has_value());
    QCOMPARE(report->formulae, (QList<FormulaJSON>{teapot, spoon}));
    QCOMPARE(report->casks, (QList<CaskJSON>{cupboard, font}));
}

void JsonReportTest::decodesTheOutdatedPackages() {
    const auto report = decoded<OutdatedResponse>(outdatedReport);
    QVERIFY(report.has_value());
    QCOMPARE(report->formulae,
             (QList<OutdatedFormulaJSON>{{.name = u"teapot"_s,
                                          .installedVersions = {u"2.9"_s, u"2.10.1_3"_s},
                                          .currentVersion = u"3.0"_s,
                                          .pinned = true},
                                         {.name = u"kitchen/tools/spoon"_s,
                                          .installedVersions = {},
                                          .currentVersion = u"1.1"_s,
                                          .pinned = {}}}));
    QCOMPARE(report->casks, (QList<OutdatedCaskJSON>{{.name = u"cupboard"_s,
                                                      .installedVersions = u"3.1,20"_s,
                                                      .currentVersion = u"3.2,21"_s}}));
}

void JsonReportTest::decodesEmptyLists() {
    const QByteArray empty = R"({"formulae":[],"casks":[]})";
    QCOMPARE(decoded<BrewListResponse>(empty), BrewListResponse());
    QCOMPARE(decoded<OutdatedResponse>(" \n" + empty + "\r\n\t "), OutdatedResponse());
}

void JsonReportTest::refusesTheListFormOfACasksVersions() {
    QByteArray json = outdatedReport;
    json.replace(R"("3.1,20")", R"(["3.1,20"])");
    QCOMPARE(decodingError<OutdatedResponse>(json),
             u"casks[0].installed_versions: expected text, found list"_s);
}

void JsonReportTest::leavesBothListsOfNamedPackagesOpen() {
    QCOMPARE(decoded<BrewInfoResponse>("{}"), BrewInfoResponse());
    const auto report = decoded<BrewInfoResponse>(installedReport);
    const auto same = decoded<BrewListResponse>(installedReport);
    QVERIFY(report && report->formulae && report->casks && same);
    QCOMPARE(*report->formulae, same->formulae);
    QCOMPARE(*report->casks, same->casks);
}

void JsonReportTest::ignoresUnknownKeys_data() {
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("text") << QByteArray(R"("} \" , [ \\")");
    QTest::newRow("object") << QByteArray(R"({"name": 1, "casks": {}, "": [{}]})");
    QTest::newRow("beyond 64 bits") << QByteArray("[1,123456789012345678901234567890,-3]");
    QTest::newRow("far beyond 64 bits") << QByteArray(1000, '7');
    QTest::newRow("beyond floating point") << QByteArray(R"({"a\\": -1.5e+9999, "\"1": "1e9 "})");
    QTest::newRow("deep, but not too deep")
        << QByteArray(1000, '[') + "1e999" + QByteArray(1000, ']');
}

void JsonReportTest::ignoresUnknownKeys() {
    QFETCH(QByteArray, value);
    const QByteArray extra = "\"size\": " + value;
    const QByteArray json = "{" + extra + R"(, "formulae": [{"name": "1e999 \"2", )" + extra +
                            R"(}], "casks": [{)" + extra + R"(, "token": "b"}], "": )" + value +
                            "}";
    const auto report = decoded<BrewListResponse>(json);
    QVERIFY2(report.has_value(), qPrintable(decodingError<BrewListResponse>(json)));
    QCOMPARE(report->formulae.size(), 1);
    QCOMPARE(report->formulae[0].name, u"1e999 \"2"_s);
    QCOMPARE(report->casks.size(), 1);
    QCOMPARE(report->casks[0].token, u"b"_s);
}

void JsonReportTest::takesTheLastOfDuplicateKeys() {
    const auto report = decoded<BrewListResponse>(
        R"({"casks": [{"token": "x"}], "formulae": [{"name": "a", "desc": "one", "name": "b",
            "versions": {"stable": "1"}, "versions": {"head": "2"}, "desc": null}], "casks": []})");
    QVERIFY(report.has_value());
    QVERIFY(report->casks.isEmpty());
    const FormulaJSON& formula = report->formulae.constFirst();
    QCOMPARE(formula.name, u"b"_s);
    QCOMPARE(formula.desc, std::nullopt);
    QCOMPARE(formula.versions, (FormulaVersions{.stable = {}, .head = u"2"_s}));

    // All of them count when it comes to being right.
    QCOMPARE(decodingError<BrewListResponse>(formulaBefore + R"({"name": 3, "name": "b"})" +
                                             formulaBehind),
             u"formulae[0].name: expected text, found number"_s);
}

void JsonReportTest::keepsTextAsItIs_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QByteArray() << u""_s;
    QTest::newRow("blanks around") << QByteArray("  a ") << u"  a "_s;
    QTest::newRow("escapes") << QByteArray(R"(\"\\\/\b\f\n\r\t)") << u"\"\\/\b\f\n\r\t"_s;
    QTest::newRow("code units") << QByteArray(R"(\u00e9\uD83c\uDF7A\u0000z)") << u"é🍺\0z"_s;
    QTest::newRow("UTF-8") << QByteArray("é 한국어 日本語 🍺 \x7F") << u"é 한국어 日本語 🍺 \x7F"_s;
    QTest::newRow("marks of byte order")
        << QByteArray("\xEF\xBB\xBF\xEF\xBB\xBFone \xEF\xBB\xBF") << u"\ufeff\ufeffone \ufeff"_s;
    QTest::newRow("an escaped one") << QByteArray(R"(\ufeff)") << u"\ufeff"_s;
    QTest::newRow("could be composed")
        << QByteArray("cafe\u0301 \u1112\u1161\u11ab") << u"cafe\u0301 \u1112\u1161\u11ab"_s;
    QTest::newRow("right to left") << QByteArray("שלום \u202E") << u"שלום \u202E"_s;
    QTest::newRow("markup") << QByteArray("<b>%1 &amp; %n</b>") << u"<b>%1 &amp; %n</b>"_s;
    QTest::newRow("long") << QByteArray(1'000'000, 'x') << QString(1'000'000, u'x');
}

void JsonReportTest::keepsTextAsItIs() {
    QFETCH(QByteArray, json);
    QFETCH(QString, text);
    const auto report = decoded<BrewListResponse>(formulaBefore + R"({"name": ")" + json +
                                                  R"(", "desc": ")" + json + "\"}" + formulaBehind);
    QVERIFY(report.has_value());
    QCOMPARE(report->formulae[0].name, text);
    QCOMPARE(report->formulae[0].desc, text);
}

void JsonReportTest::makesTextsThatAreAlikeOnce() {
    const auto report = decoded<BrewListResponse>(
        R"({"formulae": [
            {"name": "a", "full_name": "a", "versions": {"stable": "1"},
             "installed": [{"version": "1"}]},
            {"name": "b", "dependencies": ["a"]}], "casks": []})");
    QVERIFY(report.has_value());
    const FormulaJSON& a = report->formulae[0];
    QVERIFY(a.name.isSharedWith(*a.fullName));
    QVERIFY(a.name.isSharedWith(report->formulae[1].dependencies->constFirst()));
    QVERIFY(a.versions->stable->isSharedWith(a.installed->constFirst().version));
}

void JsonReportTest::keepsManyTextsApart() {
    QByteArray formulae;
    constexpr int count = 5'000;
    for (int i = 0; i < count; ++i) {
        const QByteArray number = QByteArray::number(i);
        formulae += R"({"name": ")" + number + R"(", "desc": ")" + number + " of many\"},";
    }
    formulae.chop(1);
    const auto report = decoded<BrewListResponse>(formulaBefore + formulae + formulaBehind);
    QVERIFY(report.has_value());
    for (int i = 0; i < count; ++i) {
        QCOMPARE(report->formulae[i].name, QString::number(i));
        QCOMPARE(report->formulae[i].desc, u"%1 of many"_s.arg(i));
    }
}

void JsonReportTest::decodesWithAndWithoutSpareCapacity() {
    std::string tight = outdatedReport.toStdString();
    tight.shrink_to_fit();
    std::string roomy = tight;
    // Whatever stands behind the text is no part of it.
    roomy += std::string(4096, ']');
    roomy.resize(tight.size());
    const auto fromTight = decodeReport<OutdatedResponse>(tight);
    QVERIFY(std::holds_alternative<OutdatedResponse>(fromTight));
    QCOMPARE(fromTight, decodeReport<OutdatedResponse>(roomy));
}

void JsonReportTest::encodesWhatItDecodes() {
    const auto installed = decoded<BrewListResponse>(installedReport);
    QVERIFY(installed.has_value());
    QCOMPARE(decoded<BrewListResponse>(encodeReport(*installed)), installed);
    const auto named = decoded<BrewInfoResponse>(installedReport);
    QVERIFY(named.has_value());
    QCOMPARE(decoded<BrewInfoResponse>(encodeReport(*named)), named);
    const auto outdated = decoded<OutdatedResponse>(outdatedReport);
    QVERIFY(outdated.has_value());
    QCOMPARE(decoded<OutdatedResponse>(encodeReport(*outdated)), outdated);
}

void JsonReportTest::encodesRequiredKeysAlwaysAndAbsentOnesNever() {
    FormulaJSON full = decoded<BrewListResponse>(installedReport)->formulae[0];
    full.installed->removeFirst();
    const BrewListResponse installed{.formulae = {{}, full}, .casks = {{}}};
    const QByteArray installedJson = R"json({
        "formulae": [
            {"name": ""},
            {"name": "teapot", "full_name": "kitchen/tools/teapot",
             "desc": "Short, \"stout\" & 100 % ☕ 한국어", "homepage": "https://teapot.example/",
             "versions": {"stable": "2.10.1_3", "head": "HEAD"},
             "installed": [{"version": "2.10.1_3", "installed_on_request": true,
                            "installed_as_dependency": false}],
             "outdated": true, "dependencies": ["handle", "spout@3", "lid"]}
        ],
        "casks": [{"token": ""}]
    })json";
    const OutdatedResponse outdated{.formulae = {{}}, .casks = {{}}};
    const QByteArray outdatedJson = R"json({
        "formulae": [{"name": "", "installed_versions": [], "current_version": ""}],
        "casks": [{"name": "", "installed_versions": "", "current_version": ""}]
    })json";

    QCOMPARE(parsed(encodeReport(installed)), parsed(installedJson));
    QCOMPARE(parsed(encodeReport(outdated)), parsed(outdatedJson));
    QCOMPARE(encodeReport(BrewInfoResponse()), QByteArray("{}"));
}

QTEST_GUILESS_MAIN(JsonReportTest)
#include "tst_jsonreport.moc"
