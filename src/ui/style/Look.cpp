// SPDX-License-Identifier: MIT
#include "style/Look.h"

#include "style/FocusMarks.h"
#include "style/LumoraStyle.h"
#include "style/Theme.h"
#include "style/Typography.h"

#include <QApplication>
#include <QIcon>
#include <QToolTip>

using namespace Qt::StringLiterals;

void Look::setUp() {
    QApplication::setWindowIcon(QIcon(u":/Lumora.png"_s));
#ifndef Q_OS_MACOS
    QApplication::setStyle(new LumoraStyle);
#endif
    QCoreApplication::instance()->installEventFilter(new FocusMarks(QCoreApplication::instance()));
    // After the style, which takes the tool tips' font away.
    QApplication::setFont(Typography::font(Typography::body));
    QToolTip::setFont(Typography::font(Typography::caption));
}

void Look::setDark(bool isDark) {
    const QPalette palette = (isDark ? Theme::dark() : Theme::light()).palette();
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}
