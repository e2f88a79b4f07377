// SPDX-License-Identifier: MIT
//
// Any bytes as each of the reports that brew prints.
#include "BrewListResponse.h"
#include "BrewPackage.h"
#include "JsonReport.h"
#include "OutdatedResponse.h"
#include "Require.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Qt's own reading of the same bytes.
struct Reference final {
    explicit Reference(const std::string& json)
        : document(QJsonDocument::fromJson(
              QByteArray::fromRawData(json.data(), static_cast<qsizetype>(json.size())), &error)) {}

    [[nodiscard]] bool isStrictlyJson() const {
        return error.error == QJsonParseError::NoError ||
               // Numbers beyond what it can hold are none to Qt.
               error.error == QJsonParseError::IllegalNumber;
    }

    QJsonParseError error;
    QJsonDocument document;
};

void requireReadable(const DecodingError& error) {
    const auto isShown = [](QChar character) {
        return character.isPrint() || character.isSurrogate();
    };
    require(!error.description.isEmpty(), "an error says something");
    require(std::ranges::all_of(error.description, isShown), "an error is one line to read");
    require(error.description.isValidUtf16(), "an error cuts no character in halves");
}

template <class Record>
void requireNames(const QList<Record>& records, const QJsonArray& array, QLatin1StringView key,
                  QString Record::*name) {
    require(records.size() == array.size(), "a record for every item");
    for (qsizetype i = 0; i < records.size(); ++i)
        require(records.at(i).*name == array.at(i)[key].toString(), "names as Qt reads them");
}

void requireSame(const BrewListResponse& report, const QJsonDocument& json) {
    requireNames(report.formulae, json["formulae"_L1].toArray(), "name"_L1, &FormulaJSON::name);
    requireNames(report.casks, json["casks"_L1].toArray(), "token"_L1, &CaskJSON::token);
    for (const FormulaJSON& formula : report.formulae) {
        const BrewPackage package = BrewPackage::fromFormula(formula);
        require(package.id() == u"formula-"_s + formula.name, "a formula's identity");
        require(package.installedOnRequest || formula.installed, "only a keg says otherwise");
    }
    for (const CaskJSON& cask : report.casks) {
        const BrewPackage package = BrewPackage::fromCask(cask);
        require(package.id() == u"cask-"_s + cask.token, "a cask's identity");
        require(package.dependencies.isEmpty(), "a cask has no dependencies");
    }
}

void requireSame(const BrewInfoResponse& report, const QJsonDocument& json) {
    requireNames(report.formulae.value_or(QList<FormulaJSON>()), json["formulae"_L1].toArray(),
                 "name"_L1, &FormulaJSON::name);
    requireNames(report.casks.value_or(QList<CaskJSON>()), json["casks"_L1].toArray(), "token"_L1,
                 &CaskJSON::token);
}

void requireSame(const OutdatedResponse& report, const QJsonDocument& json) {
    requireNames(report.formulae, json["formulae"_L1].toArray(), "name"_L1,
                 &OutdatedFormulaJSON::name);
    requireNames(report.casks, json["casks"_L1].toArray(), "name"_L1, &OutdatedCaskJSON::name);
}

template <class Report>
void decode(const std::string& json, const Reference& reference) {
    const auto outcome = decodeReport<Report>(json);
    require(decodeReport<Report>(json) == outcome, "the same again");
    if (const auto* error = std::get_if<DecodingError>(&outcome))
        return requireReadable(*error);

    const auto& report = std::get<Report>(outcome);
    require(reference.isStrictlyJson(), "what is taken is JSON");
    if (reference.error.error == QJsonParseError::NoError)
        requireSame(report, reference.document);
    const auto again = decodeReport<Report>(encodeReport(report).toStdString());
    require(std::holds_alternative<Report>(again) && std::get<Report>(again) == report,
            "a report survives being written");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string json(data, data + size);
    const Reference reference(json);
    decode<BrewListResponse>(json, reference);
    decode<BrewInfoResponse>(json, reference);
    decode<OutdatedResponse>(json, reference);
    return 0;
}
