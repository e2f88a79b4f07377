// SPDX-License-Identifier: MIT
#include "Decoding.h"
#include "SampleReports.h"

#include <QtTest>

#include <random>

using namespace Qt::StringLiterals;

/// Thousands of reports damaged by chance, other ones every time. LUMORA_SEED repeats a run.
class DamagedReportsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void decodesOrExplains_data();
    void decodesOrExplains();
    void explainsEveryTruncation_data();
    void explainsEveryTruncation();

private:
    /// A number from 0 to `highest`.
    [[nodiscard]] qsizetype chance(qsizetype highest) {
        return std::uniform_int_distribution<qsizetype>(0, highest)(m_random);
    }

    void damage(QByteArray& json);

    std::mt19937_64 m_random;
};

namespace {

/// What tends to upset a parser.
const QList<QByteArray> fragments{"{",
                                  "}",
                                  "[",
                                  "]",
                                  ",",
                                  ":",
                                  "\"",
                                  "\\",
                                  "\\u",
                                  "\\ud83c",
                                  "\\udf7a",
                                  "null",
                                  "true",
                                  "fals",
                                  "-",
                                  "0",
                                  "1e999",
                                  "-0.5E+3",
                                  "0x1F",
                                  "[[[[[[[",
                                  "{\"a\":",
                                  "\"name\"",
                                  "\"casks\"",
                                  "\n",
                                  "\r",
                                  "\t",
                                  "\x1B",
                                  "\x7F",
                                  "\xC3",
                                  "\xA9",
                                  "\xED\xA0\x80",
                                  "\xF4\x90\x80\x80",
                                  "\xEF\xBB\xBF",
                                  "한",
                                  "🍺",
                                  "123456789012345678901234567890",
                                  "{\"formulae\":[],\"casks\":[]}",
                                  "Welcome back!\n"};

/// Whether the outcome is as it should be for a report of this kind.
template <class Report>
bool isSound(const std::string& json) {
    const auto outcome = decodeReport<Report>(json);
    if (const auto* error = std::get_if<DecodingError>(&outcome)) {
        // One readable line that names the place, or the parser's own words.
        constexpr qsizetype longest = 200;
        static const QRegularExpression shape(
            u"^(line \\d+, column \\d+: .+ near .+"
            u"|(line 1, column 1|the report( is empty or not valid UTF-8)?|"
            u"(formulae|casks)[\\w.\\[\\]]*): expected .+, found .+|the report: .+)$"_s);
        return error->description.size() <= longest && shape.match(error->description).hasMatch() &&
               std::ranges::all_of(error->description,
                                   [](QChar c) { return c.isPrint() || c.isSurrogate(); });
    }
    const auto& report = std::get<Report>(outcome);
    return decodeReport<Report>(encodeReport(report).toStdString()) == outcome;
}

using Check = bool (*)(const std::string& json);

} // namespace

void DamagedReportsTest::initTestCase() {
    bool isSet = false;
    const int given = qEnvironmentVariableIntValue("LUMORA_SEED", &isSet);
    const auto seed = isSet ? static_cast<unsigned>(given) : std::random_device()() % 1'000'000;
    m_random.seed(seed);
    qInfo("LUMORA_SEED=%u", seed);
}

void DamagedReportsTest::damage(QByteArray& json) {
    const qsizetype at = chance(json.size());
    const qsizetype length = chance(std::min<qsizetype>(json.size() - at, 40));
    const QByteArray fragment = fragments[chance(fragments.size() - 1)];
    switch (chance(6)) {
    case 0:
        json.truncate(at);
        break;
    case 1:
        json.remove(at, length);
        break;
    case 2:
        json.insert(at, fragment);
        break;
    case 3:
        json.replace(at, length, fragment);
        break;
    case 4:
        json.insert(chance(json.size()), json.mid(at, length));
        break;
    case 5: { // Another kind of value for a key.
        const qsizetype colon = json.indexOf(": ", at);
        if (colon >= 0)
            json.replace(colon + 2, 1, fragment);
        break;
    }
    default:
        if (at < json.size())
            json[at] = static_cast<char>(static_cast<unsigned char>(json[at]) ^ (1U << chance(7)));
    }
}

void DamagedReportsTest::decodesOrExplains_data() {
    QTest::addColumn<QByteArray>("report");
    QTest::addColumn<Check>("check");
    QTest::newRow("installed packages") << installedReport << Check(isSound<BrewListResponse>);
    QTest::newRow("named packages") << installedReport << Check(isSound<BrewInfoResponse>);
    QTest::newRow("outdated packages") << outdatedReport << Check(isSound<OutdatedResponse>);
}

void DamagedReportsTest::decodesOrExplains() {
    QFETCH(QByteArray, report);
    QFETCH(Check, check);
    QVERIFY(check(report.toStdString()));
    constexpr int rounds = 3000;
    for (int round = 0; round < rounds; ++round) {
        QByteArray json = report;
        for (qsizetype count = chance(3); count >= 0; --count)
            damage(json);
        QVERIFY2(check(json.toStdString()), qPrintable(QString::fromUtf8(json)));
    }
}

void DamagedReportsTest::explainsEveryTruncation_data() {
    decodesOrExplains_data();
}

void DamagedReportsTest::explainsEveryTruncation() {
    QFETCH(QByteArray, report);
    QFETCH(Check, check);
    const QByteArray whole = report.trimmed();
    for (qsizetype length = 0; length < whole.size(); ++length) {
        const QByteArray json = whole.first(length);
        QVERIFY2(check(json.toStdString()), qPrintable(QString::fromUtf8(json)));
        QVERIFY(!decodingError<BrewListResponse>(json).isEmpty());
    }
}

QTEST_GUILESS_MAIN(DamagedReportsTest)
#include "tst_damagedreports.moc"
