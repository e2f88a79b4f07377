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

/// Whether all that a report is written as is in the document that it was read from.
bool isFoundIn(const QJsonValue& document, const QJsonValue& report) {
    if (report.isObject()) {
        const QJsonObject object = report.toObject();
        return document.isObject() && std::ranges::all_of(object.keys(), [&](const QString& key) {
                   return isFoundIn(document[key], object[key]);
               });
    }
    if (report.isArray()) {
        return document.isArray() &&
               std::ranges::equal(document.toArray(), report.toArray(), &isFoundIn);
    }
    if (report.isString()) {
        // Qt drops a byte order mark at the start of a text, but only if there is no escape in it.
        const auto text = [](const QJsonValue& value) {
            return value.toString().remove(QChar::ByteOrderMark);
        };
        return document.isString() && text(document) == text(report);
    }
    return document == report;
}

void requirePackages(const BrewListResponse& report) {
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

template <class Report>
void decode(const std::string& json, const Reference& reference) {
    const auto outcome = decodeReport<Report>(json);
    require(decodeReport<Report>(json) == outcome, "the same again");
    if (const auto* error = std::get_if<DecodingError>(&outcome))
        return requireReadable(*error);

    const auto& report = std::get<Report>(outcome);
    require(reference.isStrictlyJson(), "what is taken is JSON");
    const QByteArray written = encodeReport(report);
    if (reference.error.error == QJsonParseError::NoError) {
        require(isFoundIn(reference.document.object(), QJsonDocument::fromJson(written).object()),
                "what is read is what Qt reads");
    }
    const auto again = decodeReport<Report>(written.toStdString());
    require(std::holds_alternative<Report>(again) && std::get<Report>(again) == report,
            "a report survives being written");
    if constexpr (std::is_same_v<Report, BrewListResponse>)
        requirePackages(report);
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
