// SPDX-License-Identifier: MIT
#include "AppWindow.h"

#include <QTest>

void AppWindow::show() {
    window.show();
    if (!QTest::qWaitForWindowActive(&window))
        qFatal("The window doesn't become active");
}

void AppWindow::showLoaded() {
    show();
    waitUntilLoaded();
}

void AppWindow::waitUntilLoaded() {
    const auto isIdle = [this] {
        return !*manager.isLoadingFormulae && !*manager.isLoadingCasks &&
               !*manager.isLoadingOutdated && !*manager.isLoadingTaps;
    };
    if (!QTest::qWaitFor(isIdle))
        qFatal("The lists are not loaded");
    // What is due is rendered in the turn after the change.
    QCoreApplication::processEvents();
}

void AppWindow::choose(SidebarCategory category) const {
    sidebar().click(category);
}

LangManager& AppWindow::speaking(Lang lang) {
    LangManager& languages = LangManager::shared();
    languages.setCurrent(lang);
    return languages;
}
