// SPDX-License-Identifier: MIT
#include "LumoraApp.h"

#include "AskpassProgram.h"
#include "BrewDiscovery.h"
#include "HelperProgram.h"
#include "LangManager.h"
#include "SessionVariables.h"
#include "shell/ContentView.h"
#include "style/Look.h"

#include <cstdlib>
#ifdef __GLIBC__
#include <malloc.h>
#endif

using namespace Qt::StringLiterals;

namespace {

/// A report is megabytes of text that are gone as soon as they are read.
void giveBackWhatReportsTook() {
#ifdef __GLIBC__
    // Once a large block was freed glibc keeps the next ones in its heaps, of which every thread
    // that runs a command has one. Told its own first limit, it goes on giving them back.
    constexpr int limit = 128 * 1024;
    mallopt(M_MMAP_THRESHOLD, limit);
    mallopt(M_ARENA_MAX, 1);
#endif
}

BrewDiscovery discoveryFor(const CommandLineOptions& options) {
    if (!options.brewPath)
        return BrewDiscovery::usual(homeDirectory());
    return {.candidates = {options.brewPath->toStdString()}, .askShell = false};
}

/// What an update may put a newer one in the place of.
std::optional<ApplicationBundle> replaceable(const std::optional<ApplicationBundle>& bundle) {
#ifdef LUMORA_SELF_UPDATE
    return bundle;
#else
    // Whoever has built it without the self-updater has another way to update it.
    (void)bundle;
    return std::nullopt;
#endif
}

/// With the program that is there to ask for them, unless there is another one.
ReleaseSource whole(ReleaseSource releases) {
    if (releases.program.isEmpty())
        releases.program =
            HelperProgram::near(QApplication::applicationDirPath(), u"lumora-fetch"_s);
    return releases;
}

} // namespace

LumoraApp::LumoraApp(int& argc, char** argv, const ReleaseSource& releases) {
    giveBackWhatReportsTook();
    QApplication::setOrganizationName(u"Lumora"_s);
    QApplication::setApplicationName(u"Lumora"_s);
    QApplication::setApplicationVersion(u"" LUMORA_VERSION ""_s);
    QApplication::setDesktopFileName(u"lumora"_s);
    m_options = CommandLineOptions::parse(argc, argv);
    m_application.emplace(argc, argv);

    Look::setUp();
    if (m_options.appearance == CommandLineOptions::Appearance::System) {
        followDesktop();
    } else {
        const bool isDark = m_options.appearance == CommandLineOptions::Appearance::Dark;
        Look::setDark(isDark);
        // For the window that asks for a password.
        qputenv(SessionVariables::appearance, isDark ? "dark" : "light");
    }

    // The manager's first command has to know of it.
    AskpassProgram::offer(QApplication::applicationDirPath());
    // Before those who show the language.
    m_toolkitTexts.emplace(LangManager::shared());
    m_brewManager.emplace(discoveryFor(m_options));
    m_sleepInhibitor.emplace(*m_brewManager);
    const std::optional<ApplicationBundle> bundle = ApplicationBundle::running();
    m_window.emplace(*m_brewManager, LangManager::shared(),
                     bundle ? bundle->picturePath() : QString());
    m_notices.emplace(m_window->content()->notice(), *m_window);

    m_alerts.emplace(&*m_window);
    m_updater.emplace(whole(releases), replaceable(bundle), *m_alerts,
                      QApplication::arguments().sliced(1));
    QObject::connect(&*m_window, &MainWindow::updateCheckRequested, &*m_updater,
                     &AutoUpdater::checkForUpdatesManually);
    QObject::connect(&*m_updater, &AutoUpdater::terminationRequested, &*m_application,
                     &QApplication::quit, Qt::QueuedConnection);
    m_updater->checkAfterLaunch();

    // Qt asks all windows then whether they agree, and the menu that a click behind the last one's
    // end has opened doesn't: the application would live on without a window.
    QObject::connect(&*m_application, &QApplication::lastWindowClosed, &*m_application,
                     [] { QApplication::exit(); });
}

void LumoraApp::run() {
    m_window->show();
    const int status = QApplication::exec();
    // Threads that can't be joined may be at work: one for each command, which goes on without
    // us (PipeGuard), or the updater's. Nothing may be destroyed under their feet.
    std::_Exit(status);
}

void LumoraApp::followDesktop() {
    m_appearance.emplace();
    Look::follow(*m_appearance);
}
