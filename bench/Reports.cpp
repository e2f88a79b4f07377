// SPDX-License-Identifier: MIT
#include "Reports.h"

#include "BrewListResponse.h"
#include "JsonReport.h"
#include "SyntheticReport.h"

#include <QProcess>
#include <simdjson.h>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

std::string recorded() {
    QProcess xz;
    xz.start(u"xz"_s, {u"-dc"_s,
                       qEnvironmentVariable("LUMORA_RECORDED") + u"/scale/all-formulae.json.xz"_s});
    xz.waitForFinished(-1);
    return xz.readAllStandardOutput().toStdString();
}

} // namespace

std::string reportOf(int count) {
    std::string whole = recorded();
    if (whole.empty())
        return syntheticReport(count);
    if (count >= wholeCatalogue)
        return whole;
    const simdjson::padded_string text(whole);
    simdjson::ondemand::parser parser;
    auto document = parser.iterate(text);
    std::vector<std::string_view> formulae;
    for (auto formula : document["formulae"].get_array())
        formulae.push_back(formula.get_object().value().raw_json());
    std::string result = R"({"formulae":[)";
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        if (i > 0)
            result += ',';
        result += formulae.at(i * formulae.size() / static_cast<std::size_t>(count));
    }
    return result + R"(],"casks":[]})";
}

QList<BrewPackage> packagesIn(const std::string& report) {
    auto decoded = decodeReport<BrewListResponse>(report);
    QList<BrewPackage> packages;
    for (FormulaJSON& formula : std::get<BrewListResponse>(decoded).formulae)
        packages.append(BrewPackage::fromFormula(std::move(formula)));
    return packages;
}
