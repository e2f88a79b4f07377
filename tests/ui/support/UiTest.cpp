// SPDX-License-Identifier: MIT
#include "UiTest.h"

#include "LangManager.h"
#include "style/LumoraStyle.h"
#include "style/Theme.h"
#include "style/Typography.h"

#include <QApplication>
#include <QToolTip>

int UiTest::runInApplication(int& argc, char** argv, const std::function<int()>& run) {
    const FreshHome home;
    const QApplication application(argc, argv);
    QApplication::setFont(Typography::font(Typography::body));
    QApplication::setStyle(new LumoraStyle);
    setDark(false);
    LangManager::shared().setCurrent(Lang::en);
    return run();
}

void UiTest::setDark(bool isDark) {
    const QPalette palette = (isDark ? Theme::dark() : Theme::light()).palette();
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}
