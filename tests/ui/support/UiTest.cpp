// SPDX-License-Identifier: MIT
#include "UiTest.h"

#include "LangManager.h"
#include "style/Look.h"

#include <QApplication>

int UiTest::runInApplication(int& argc, char** argv, const std::function<int()>& run) {
    const FreshHome home;
    const QApplication application(argc, argv);
    Look::setUp();
    Look::setDark(false);
    LangManager::shared().setCurrent(Lang::en);
    return run();
}
