// SPDX-License-Identifier: MIT
//
// The application as main() puts it together, with a watch on its first frame.
// Usage: bench_launch BREW [--exit]
#include "BrewDiscovery.h"
#include "BrewManager.h"
#include "FirstFrame.h"
#include "LangManager.h"
#include "shell/MainWindow.h"
#include "style/Look.h"
#include "style/SystemAppearance.h"

#include <cstdlib>

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    Look::setUp();
    const SystemAppearance appearance;
    Look::setDark(appearance.isDark());
    BrewManager manager(BrewDiscovery{.candidates = {argc > 1 ? argv[1] : ""}});
    MainWindow window(manager, LangManager::shared(), QString());
    const FirstFrame firstFrame(&window);
    window.show();
    std::_Exit(QApplication::exec());
}
