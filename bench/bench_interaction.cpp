// SPDX-License-Identifier: MIT
//
// What each thing that users do in the window costs the interface thread, from the event until all
// that follows from it is painted: a line per sample, in milliseconds.
// Usage: bench_interaction ROWS [NAME...]
//        bench_interaction ROWS --cycles
//
// --cycles does again and again what should leave nothing behind, and tells after how often how
// many kibibytes of the heap are in use, and how many are the process's own.
#include "BrewDiscovery.h"
#include "BrewManager.h"
#include "LangManager.h"
#include "ProcessorTime.h"
#include "Reports.h"
#include "shell/MainWindow.h"
#include "style/Look.h"
#include "widgets/RowListView.h"
#include "widgets/Sheet.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int sampleCount = 200;
constexpr int cycleCount = 252;
/// With every language in both appearances equally often.
constexpr int cyclesToSample = 6;

/// Knows what is painted, and what each frame of it takes.
class Application final : public QApplication {
public:
    using QApplication::QApplication;

    [[nodiscard]] int paintCount() const { return m_paintCount; }

    /// The interface thread's time for each since the last question.
    [[nodiscard]] QList<double> takeFrames() { return std::exchange(m_frames, {}); }

    bool notify(QObject* receiver, QEvent* event) override {
        const int before = m_paintCount;
        const ProcessorTime time;
        m_paintCount += event->type() == QEvent::Paint ? 1 : 0;
        const bool result = QApplication::notify(receiver, event);
        if (event->type() == QEvent::UpdateRequest && m_paintCount != before)
            m_frames.append(time.elapsed());
        return result;
    }

private:
    int m_paintCount{0};
    QList<double> m_frames;
};

/// The application's window, with a brew that has nothing installed and lists of its own.
class Window final {
public:
    Window(const QString& brew, int rows) : m_manager({.candidates = {brew.toStdString()}}) {
        m_window.show();
        require(QTest::qWaitForWindowExposed(&m_window, patience), "the window is not to be seen");
        // There may be no window manager to do it.
        m_window.activateWindow();
        require(QTest::qWaitForWindowActive(&m_window, patience), "the window is not active");
        waitForLoads();
        QList<BrewPackage> packages = packagesIn(reportOf(rows));
        QList<OutdatedPackage> outdated;
        for (const BrewPackage& package : packages)
            outdated.append({.name = package.name,
                             .currentVersion = package.version,
                             .latestVersion = u"99.0"_s});
        m_manager.outdatedFormulae.set(std::move(outdated));
        m_manager.formulae.set(packages);
        for (BrewPackage& package : packages)
            package.type = PackageType::cask;
        m_manager.casks.set(std::move(packages));
        rest();
    }

    /// Until nothing is due, loading, or fading in.
    void rest() {
        waitForLoads();
        const auto isStill = [this] {
            const Sheet* const sheet = Sheet::openOver(&m_window);
            return sheet == nullptr || sheet->graphicsEffect() == nullptr;
        };
        require(QTest::qWaitFor(isStill, patience), "the sheet goes on fading");
        int before = 0;
        do {
            before = paintCount();
            QGuiApplication::sync();
        } while (paintCount() != before);
    }

    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(m_window.windowHandle(), key, modifiers);
    }

    void wheel(int delta) {
        const QPointF place = m_window.rect().center();
        QCoreApplication::postEvent(m_window.windowHandle(),
                                    new QWheelEvent(place, m_window.mapToGlobal(place), {},
                                                    {0, delta}, Qt::NoButton, Qt::NoModifier,
                                                    Qt::NoScrollPhase, false));
    }

    void resize(int change) { m_window.resize(usualSize + QSize(change, change)); }

    /// Until a search has found that much, or else nothing.
    void waitForHits(bool some) {
        const auto isThere = [&] { return m_manager.searchResults->isEmpty() != some; };
        require(QTest::qWaitFor(isThere, patience), "the search doesn't end");
        rest();
    }

    /// The interface thread's time until the window system has all that follows from the action.
    [[nodiscard]] double timeOf(const std::function<void()>& action) {
        const int before = paintCount();
        const ProcessorTime time;
        action();
        require(QTest::qWaitFor([&] { return paintCount() != before; }, patience),
                "nothing is painted");
        // What the window system has exposed meanwhile.
        QGuiApplication::sync();
        return time.elapsed();
    }

    static void require(bool condition, const char* otherwise) {
        if (condition)
            return;
        std::fprintf(stderr, "%s\n", otherwise);
        std::exit(EXIT_FAILURE);
    }

private:
    static constexpr int patience = 60'000;
    static constexpr QSize usualSize{900, 600};

    static int paintCount() { return static_cast<Application*>(qApp)->paintCount(); }

    void waitForLoads() {
        const auto isLoading = [this] {
            return *m_manager.isLoadingFormulae || *m_manager.isLoadingCasks ||
                   *m_manager.isLoadingOutdated || *m_manager.isLoadingTaps;
        };
        require(QTest::qWaitFor([&] { return !isLoading(); }, patience), "the loads don't end");
    }

    BrewManager m_manager;
    MainWindow m_window{m_manager, LangManager::shared(), QString()};
};

struct Interaction {
    const char* name;
    std::function<void(int turn)> act;
    /// What is not measured, and leads to where it begins.
    std::function<void(int turn)> begin;
    /// Where it goes on by itself: what the frames that follow are called.
    const char* later = nullptr;
};

QList<Interaction> interactions(Window& window) {
    const auto openPage = [&window](int number) {
        window.key(static_cast<Qt::Key>(Qt::Key_0 + number), Qt::ControlModifier);
    };
    const auto type = [&window](int turn) {
        static const QByteArray typed = "network\b\b\b\b\b\b\bversion\b\b\b\b\b\b\b";
        const char letter = typed.at(turn % typed.size());
        window.key(letter == '\b'
                       ? Qt::Key_Backspace
                       : static_cast<Qt::Key>(QChar::fromLatin1(letter).toUpper().unicode()));
    };
    const auto openFilter = [=, &window](int turn) {
        if (turn == 0) {
            openPage(1);
            window.key(Qt::Key_F, Qt::ControlModifier);
        }
        window.rest();
    };
    const auto moveOn = [=, &window](int turn) {
        // From the filter the arrow leads into the list.
        if (turn == 0)
            openFilter(turn);
        window.key(Qt::Key_Escape);
        window.rest();
        window.key(Qt::Key_Down);
        window.rest();
    };
    const auto rest = [&window](int) { window.rest(); };
    constexpr int pages = 7;
    constexpr int step = -120;
    constexpr int far = 50;
    return {
        {"filter keystroke", type, openFilter},
        {"wheel step", [&](int turn) { window.wheel(turn / far % 2 == 0 ? step : -step); }, rest},
        {"resize step", [&](int turn) { window.resize(1 + turn % far); }, rest},
        {"page switch", [=](int turn) { openPage(1 + (turn + 1) % pages); }, rest},
        {"sheet opening, first frame", [&](int) { window.key(Qt::Key_Return); }, moveOn,
         "sheet opening, each later frame"},
        {"theme switch", [](int turn) { Look::setDark(turn % 2 == 0); }, rest},
    };
}

/// A sheet opened and closed, a search and its end, another language, the other appearance.
void cycle(Window& window, int turn) {
    window.key(Qt::Key_1, Qt::ControlModifier);
    window.rest();
    window.key(Qt::Key_F, Qt::ControlModifier);
    window.key(Qt::Key_Down);
    window.key(Qt::Key_Return);
    window.rest();
    window.key(Qt::Key_Escape);
    window.key(Qt::Key_4, Qt::ControlModifier);
    window.rest();
    window.key(Qt::Key_F, Qt::ControlModifier);
    window.key(Qt::Key_W);
    window.waitForHits(true);
    window.key(Qt::Key_Escape);
    window.waitForHits(false);
    LangManager::shared().setCurrent(allLangs[static_cast<std::size_t>(turn) % allLangs.size()]);
    window.rest();
    Look::setDark(turn % 2 == 0);
    window.rest();
}

void tellMemory(int cycles) {
    QFile status(u"/proc/self/status"_s);
    Window::require(status.open(QFile::ReadOnly), "the system tells nothing");
    const QList<QByteArray> lines = status.readAll().split('\n');
    const auto own = std::ranges::find_if(
        lines, [](const QByteArray& line) { return line.startsWith("RssAnon:"); });
    const struct mallinfo2 heap = ::mallinfo2();
    std::printf("%d\t%.1f\t%lld\n", cycles, static_cast<double>(heap.uordblks + heap.hblkhd) / 1024,
                own->simplified().split(' ').at(1).toLongLong());
}

} // namespace

int main(int argc, char* argv[]) {
    Window::require(argc > 1, "how many rows?");
    Application application(argc, argv);
    Look::setUp();
    Look::setDark(false);
    const QTemporaryDir folder;
    QFile brew(folder.filePath(u"brew"_s));
    Window::require(brew.open(QFile::WriteOnly), "no file can be written");
    // An empty list of taps would be loaded again with every visit.
    brew.write("#!/bin/sh\ncase $1 in tap) echo homebrew/core;; search) echo wget;; "
               "*) echo '{\"formulae\":[],\"casks\":[]}';; esac\n");
    brew.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    brew.close();

    Window window(brew.fileName(), std::atoi(argv[1]));
    const QStringList names = QCoreApplication::arguments().sliced(2);
    if (names.contains(u"--cycles"_s)) {
        for (int turn = 1; turn <= cycleCount; ++turn) {
            cycle(window, turn);
            // What is known of them is no growth of the application's.
            (void)application.takeFrames();
            if (turn % cyclesToSample == 0)
                tellMemory(turn);
        }
        std::fflush(stdout);
        std::_Exit(EXIT_SUCCESS);
    }
    for (const Interaction& interaction : interactions(window)) {
        if (!names.isEmpty() && !names.contains(QLatin1String(interaction.name)))
            continue;
        for (int turn = 0; turn < sampleCount; ++turn) {
            interaction.begin(turn);
            const double time = window.timeOf([&] { interaction.act(turn); });
            std::printf("%s\t%.4f\n", interaction.name, time);
            if (interaction.later == nullptr)
                continue;
            (void)application.takeFrames();
            window.rest();
            for (const double frame : application.takeFrames())
                std::printf("%s\t%.4f\n", interaction.later, frame);
        }
        window.key(Qt::Key_Escape);
        window.rest();
    }
    std::fflush(stdout);
    // Threads may be at work for pages that are gone.
    std::_Exit(EXIT_SUCCESS);
}
