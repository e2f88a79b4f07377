// SPDX-License-Identifier: MIT
//
// Time on the interface thread from a report's text to the published list, beside the time
// that merely parsing the same text takes; and four loads of a second each.
#include "BrewDiscovery.h"
#include "BrewListResponse.h"
#include "BrewManager.h"
#include "JsonReport.h"
#include "SortByName.h"
#include "SyntheticReport.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <simdjson.h>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int wholeCatalogue = 8'500;

/// The recorded report of all formulae where there is one, else a synthetic one of its size.
const std::string& report(int count) {
    static const std::string whole = [] {
        QProcess xz;
        xz.start(u"xz"_s, {u"-dc"_s, qEnvironmentVariable("LUMORA_RECORDED") +
                                         u"/scale/all-formulae.json.xz"_s});
        xz.waitForFinished(-1);
        std::string text = xz.readAllStandardOutput().toStdString();
        return text.empty() ? syntheticReport(wholeCatalogue) : text;
    }();
    static const std::string usual = syntheticReport(300);
    return count == wholeCatalogue ? whole : usual;
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
        QList<BrewPackage> packages;
        for (FormulaJSON& formula : std::get<BrewListResponse>(decoded).formulae)
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
BENCHMARK(decodeMapSortPublish)->Arg(300)->Arg(wholeCatalogue)->Unit(benchmark::kMillisecond);
BENCHMARK(refreshAllOfOneSecondEach)->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
