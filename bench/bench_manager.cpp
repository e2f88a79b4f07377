// SPDX-License-Identifier: MIT
//
// Time on the interface thread from a report's text to the published list, beside the time
// that merely parsing the same text takes; and four loads of a second each.
#include "BrewDiscovery.h"
#include "BrewListResponse.h"
#include "BrewManager.h"
#include "JsonReport.h"
#include "Reports.h"
#include "SortByName.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QFile>
#include <QTemporaryDir>
#include <simdjson.h>

#include <benchmark/benchmark.h>

#include <map>

using namespace Qt::StringLiterals;

namespace {

/// Each of them made once.
const std::string& report(int count) {
    static std::map<int, std::string> reports;
    const auto [report, isNew] = reports.try_emplace(count);
    if (isNew)
        report->second = reportOf(count);
    return report->second;
}

void parseOnly(benchmark::State& state) {
    const std::string& text = report(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        simdjson::dom::parser parser;
        if (parser.parse(text).error() != simdjson::SUCCESS)
            state.SkipWithError("the report is broken");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}

/// The work of a load between the child's end and the lowered flag.
void decodeMapSortPublish(benchmark::State& state) {
    const std::string& text = report(static_cast<int>(state.range(0)));
    BrewManager manager(BrewDiscovery{.candidates = {"/bin/sh"}, .askShell = false});
    for (auto _ : state) {
        auto decoded = decodeReport<BrewListResponse>(text);
        QList<FormulaJSON>& formulae = std::get<BrewListResponse>(decoded).formulae;
        QList<BrewPackage> packages;
        packages.reserve(formulae.size());
        for (FormulaJSON& formula : formulae)
            packages.append(BrewPackage::fromFormula(std::move(formula)));
        sortByName(packages);
        manager.formulae.set(std::move(packages));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}

void refreshAllOfOneSecondEach(benchmark::State& state) {
    const QTemporaryDir folder;
    QFile brew(folder.filePath(u"brew"_s));
    if (!brew.open(QFile::WriteOnly))
        state.SkipWithError("no file could be written");
    brew.write("#!/bin/sh\nsleep 1\nprintf '{\"formulae\":[],\"casks\":[]}'\n");
    brew.close();
    brew.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    BrewManager manager(BrewDiscovery{.candidates = {brew.fileName().toStdString()}});
    for (auto _ : state)
        QCoro::waitFor(manager.refreshAll());
}

} // namespace

BENCHMARK(parseOnly)->Arg(300)->Arg(wholeCatalogue)->Unit(benchmark::kMillisecond);
BENCHMARK(decodeMapSortPublish)
    ->Arg(300)
    ->Arg(1'000)
    ->Arg(3'000)
    ->Arg(wholeCatalogue)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(refreshAllOfOneSecondEach)->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
