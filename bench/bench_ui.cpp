// SPDX-License-Identifier: MIT
//
// What one keystroke in the filter field and one step of scrolling cost with 8,000 packages,
// painting included.
#include "BrewDiscovery.h"
#include "BrewManager.h"
#include "pages/PackageListView.h"
#include "style/Look.h"
#include "views/PackageSelection.h"
#include "widgets/RowListView.h"
#include "widgets/SearchField.h"

#include <QApplication>
#include <QScrollBar>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int packageCount = 8'000;

QList<BrewPackage> manyPackages() {
    QList<BrewPackage> packages;
    for (int i = 0; i < packageCount; ++i) {
        BrewPackage package;
        package.name = u"package-%1"_s.arg(i, 5, 10, QChar(u'0'));
        package.desc = u"Turns everything of kind %1 into something of kind %2"_s.arg(
            QString::number(i % 97), QString::number(i % 89));
        package.version = u"%1.%2"_s.arg(QString::number(i % 13), QString::number(i % 31));
        package.isOutdated = i % 7 == 0;
        package.installedOnRequest = i % 3 != 0;
        packages.append(package);
    }
    return packages;
}

struct Window {
    BrewManager manager{BrewDiscovery{.candidates = {"/bin/sh"}, .askShell = false}};
    PackageSelection selection;
    FormulaListView page{manager, selection};
    RowListView* list = page.findChild<RowListView*>();
    SearchField* field = page.findChild<SearchField*>();

    Window() {
        manager.formulae.set(manyPackages());
        page.resize(720, 548);
        page.show();
        settle();
    }

    /// Everything that is due, drawn.
    void settle() {
        QApplication::processEvents();
        list->repaint();
    }
};

void filterKeystroke(benchmark::State& state) {
    Window window;
    const QStringList typed{u"p"_s, u"pa"_s, u"pac"_s, u"pack"_s, u"kind 8"_s, u"kind 88"_s};
    qsizetype at = 0;
    for (auto _ : state) {
        window.field->setText(typed.at(at++ % typed.size()));
        window.settle();
    }
}

void scrollStep(benchmark::State& state) {
    Window window;
    QScrollBar* const bar = window.list->verticalScrollBar();
    for (auto _ : state) {
        bar->setValue((bar->value() + 37) % bar->maximum());
        window.settle();
    }
}

} // namespace

BENCHMARK(filterKeystroke)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollStep)->Unit(benchmark::kMillisecond);

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    Look::setUp();
    Look::setDark(false);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
