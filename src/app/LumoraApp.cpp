// SPDX-License-Identifier: MIT
#include "LumoraApp.h"

#include "BrewDiscovery.h"
#include "LangManager.h"
#include "LumoraStyle.h"
#include "Theme.h"
#include "Typography.h"

#include <QIcon>
#include <QToolTip>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

BrewDiscovery discoveryFor(const CommandLineOptions& options) {
    if (!options.brewPath)
        return BrewDiscovery::usual(homeDirectory());
    return {.candidates = {options.brewPath->toStdString()}, .askShell = false};
}

} // namespace

LumoraApp::LumoraApp(int& argc, char** argv) : m_application(argc, argv) {
    QApplication::setOrganizationName(u"Lumora"_s);
    QApplication::setApplicationName(u"Lumora"_s);
    QApplication::setApplicationVersion(u"" LUMORA_VERSION ""_s);
    QApplication::setDesktopFileName(u"lumora"_s);
    m_options = CommandLineOptions::parse(m_application);

    QApplication::setWindowIcon(QIcon(u":/Lumora.png"_s));
    QApplication::setFont(Typography::font(Typography::body));
    QToolTip::setFont(Typography::font(Typography::caption));
#ifndef Q_OS_MACOS
    QApplication::setStyle(new LumoraStyle);
#endif
    applyAppearance();

    m_brewManager.emplace(discoveryFor(m_options));
    m_window.emplace(*m_brewManager, LangManager::shared(), QString());
}

int LumoraApp::run() {
    m_window->show();
    const int status = QApplication::exec();
    // A brew at work goes on without us; the threads that wait for it can't be joined.
    if (m_brewManager->leaveRunningCommands() > 0)
        std::_Exit(status);
    return status;
}

void LumoraApp::applyAppearance() {
    using Appearance = CommandLineOptions::Appearance;
    if (m_options.appearance == Appearance::System && !m_appearance) {
        m_appearance.emplace();
        QObject::connect(&*m_appearance, &SystemAppearance::changed, &*m_appearance,
                         [this] { applyAppearance(); });
    }
    const bool isDark =
        m_appearance ? m_appearance->isDark() : m_options.appearance == Appearance::Dark;
    const QPalette palette = (isDark ? Theme::dark() : Theme::light()).palette();
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}
