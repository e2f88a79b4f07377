// SPDX-License-Identifier: MIT
//
// Large outputs in the window: the time from the end of a command's printing to what it printed,
// painted; as `stall`, the longest that the interface was deaf meanwhile, in milliseconds of its
// thread's processor time. And the hits of a search, from bytes to the painted list.
#include "BrewDiscovery.h"
#include "BrewManager.h"
#include "LangManager.h"
#include "PrintedLists.h"
#include "ProcessorTime.h"
#include "pages/SearchView.h"
#include "shell/ContentView.h"
#include "shell/DetailColumn.h"
#include "shell/MainWindow.h"
#include "shell/OperationStrip.h"
#include "style/Look.h"
#include "views/Page.h"
#include "widgets/OutputText.h"
#include "widgets/PushButton.h"
#include "widgets/RowListView.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDateTime>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

enum Shape { SixtyThousandLines, OneLine, HundredMegabytes };

QByteArray printed(Shape shape) {
    constexpr qsizetype lineCount = 60'000;
    constexpr qsizetype megabyte = 1'000'000;
    const QByteArray line("Warning: The file share/odd/thing-42 was not put there by brew.\n");
    switch (shape) {
    case SixtyThousandLines:
        return line.repeated(lineCount);
    case OneLine:
        return QByteArray(10 * megabyte, 'x');
    case HundredMegabytes:
        break;
    }
    return line.repeated(100 * megabyte / line.size());
}

/// A brew that prints the same whatever it is asked for, and notes when it has.
class PrintingBrew final {
public:
    explicit PrintingBrew(const QByteArray& output) {
        write(u"output"_s, output);
        write(u"brew"_s, "#!/bin/sh\ncd " + m_folder.path().toUtf8() + "\ncat output\n: > end\n");
        QFile::setPermissions(path(), QFile::ReadOwner | QFile::ExeOwner);
    }

    [[nodiscard]] QString path() const { return m_folder.filePath(u"brew"_s); }

    [[nodiscard]] double secondsSinceEnd() const {
        const QDateTime end = QFileInfo(m_folder.filePath(u"end"_s)).lastModified();
        return static_cast<double>(end.msecsTo(QDateTime::currentDateTime())) / 1e3;
    }

private:
    void write(const QString& name, const QByteArray& content) const {
        QFile file(m_folder.filePath(name));
        if (!file.open(QFile::WriteOnly) || file.write(content) != content.size())
            qFatal("%s could not be written", qUtf8Printable(name));
    }

    const QTemporaryDir m_folder;
};

/// Watches the event loop until some widget has been painted.
class Watch final : public QObject {
public:
    using IsAwaited = std::function<bool(const QObject* painted)>;

    explicit Watch(IsAwaited isAwaited) : m_isAwaited(std::move(isAwaited)) {
        const auto* const dispatcher = QAbstractEventDispatcher::instance();
        connect(dispatcher, &QAbstractEventDispatcher::awake, this, &Watch::turn);
        connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, &Watch::turn);
        qApp->installEventFilter(this);
    }

    /// The longest turn of the loop.
    double waitForPainting() {
        m_longest = 0;
        m_turn = ProcessorTime();
        m_loop.exec();
        turn();
        return m_longest;
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        // Queued: the painting is part of it.
        if (event->type() == QEvent::Paint && m_isAwaited(watched))
            QMetaObject::invokeMethod(&m_loop, &QEventLoop::quit, Qt::QueuedConnection);
        return false;
    }

private:
    void turn() {
        m_longest = std::max(m_longest, m_turn.elapsed());
        m_turn = ProcessorTime();
    }

    IsAwaited m_isAwaited;
    QEventLoop m_loop;
    ProcessorTime m_turn;
    double m_longest{};
};

struct Window {
    PrintingBrew brew;
    BrewManager manager{BrewDiscovery{.candidates = {brew.path().toStdString()}}};
    MainWindow window{manager, LangManager::shared(), QString()};

    explicit Window(benchmark::State& state) : brew(printed(static_cast<Shape>(state.range(0)))) {
        window.resize(900, 1000);
        window.content()->setSelectedCategory(SidebarCategory::settings);
        window.show();
        QApplication::processEvents();
        // The loads at the start read the same.
        while (*manager.isLoadingFormulae || *manager.isLoadingCasks ||
               *manager.isLoadingOutdated || *manager.isLoadingTaps)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QApplication::processEvents();
    }
};

void runDoctor(benchmark::State& state) {
    Window window(state);
    double stall = 0;
    for (auto _ : state) {
        window.window.content()->setSelectedCategory(SidebarCategory::about);
        QApplication::processEvents();
        window.window.content()->setSelectedCategory(SidebarCategory::settings);
        QApplication::processEvents();
        const QWidget* const page = window.window.content()->detailColumn()->page();
        const OutputText* const text = page->findChild<OutputSection*>(u"doctorOutput"_s)->text();
        Watch watch([text](const QObject* painted) {
            return painted == text->viewport() && !text->document()->isEmpty();
        });
        page->findChild<PushButton*>(u"doctorButton"_s)->click();
        stall = std::max(stall, watch.waitForPainting());
        state.SetIterationTime(window.brew.secondsSinceEnd());
    }
    state.counters["stall"] = stall;
}

void runUpgrade(benchmark::State& state) {
    Window window(state);
    double stall = 0;
    for (auto _ : state) {
        Watch watch([](const QObject* painted) {
            return qobject_cast<const OperationStrip*>(painted) != nullptr;
        });
        const auto task = window.manager.upgradeAll();
        stall = std::max(stall, watch.waitForPainting());
        state.SetIterationTime(window.brew.secondsSinceEnd());
    }
    state.counters["stall"] = stall;
}

/// The transcript of an operation that printed so much.
void openTranscript(benchmark::State& state) {
    Window window(state);
    Watch strip([](const QObject* painted) {
        return qobject_cast<const OperationStrip*>(painted) != nullptr;
    });
    const auto task = window.manager.upgradeAll();
    strip.waitForPainting();
    double stall = 0;
    for (auto _ : state) {
        Watch watch([](const QObject* painted) {
            const auto* const text = qobject_cast<const OutputText*>(painted);
            return text != nullptr && text->isVisible();
        });
        const ProcessorTime time;
        window.window.content()->showOutput();
        const double opened = time.elapsed();
        stall = std::max({stall, opened, watch.waitForPainting()});
        state.SetIterationTime(time.elapsed() / 1e3);
    }
    state.counters["stall"] = stall;
}

void showHits(benchmark::State& state) {
    QByteArray bytes("==> Formulae\n");
    QSet<QString> installed;
    for (int i = 0; i < state.range(0); ++i) {
        const QByteArray name = "package-" + QByteArray::number(i).rightJustified(5, '0');
        bytes += name + '\n';
        if (i % 27 == 0)
            installed.insert(QString::fromUtf8(name));
        if (2 * i == state.range(0))
            bytes += "\n==> Casks\n";
    }
    const std::string output = bytes.toStdString();

    BrewManager manager(BrewDiscovery{.candidates = {"/bin/sh"}, .askShell = false});
    PackageSelection selection;
    SearchView page(manager, selection);
    auto* const list = page.findChild<RowListView*>();
    page.resize(720, 548);
    page.show();
    QApplication::processEvents();
    for (auto _ : state) {
        manager.searchResults.set(printedHits(QString::fromStdString(output), installed, {}));
        QApplication::processEvents();
        list->repaint();
    }
}

} // namespace

BENCHMARK(showHits)->Arg(8'000)->Unit(benchmark::kMillisecond);
BENCHMARK(runDoctor)
    ->DenseRange(SixtyThousandLines, HundredMegabytes)
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(runUpgrade)
    ->DenseRange(SixtyThousandLines, HundredMegabytes)
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(openTranscript)
    ->DenseRange(SixtyThousandLines, HundredMegabytes)
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    Look::setUp();
    Look::setDark(false);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
