// SPDX-License-Identifier: MIT
#include "style/Look.h"

#include "style/FocusMarks.h"
#include "style/LumoraStyle.h"
#include "style/SystemAppearance.h"
#include "style/Typography.h"

#include <QApplication>
#include <QIcon>
#include <QToolTip>

using namespace Qt::StringLiterals;

void Look::setUp() {
    // Drawn in the few small sizes that a window system is given. All of a picture of 512 pixels,
    // decoded and sent, would take a fifth of the start.
    QApplication::setWindowIcon(QIcon(u":/Lumora.svg"_s));
#ifndef Q_OS_MACOS
    QApplication::setStyle(new LumoraStyle);
#endif
    QCoreApplication::instance()->installEventFilter(new FocusMarks(QCoreApplication::instance()));
    // After the style, which takes the tool tips' font away.
    QApplication::setFont(Typography::font(Typography::body));
    QToolTip::setFont(Typography::font(Typography::caption));
}

void Look::setDark(bool isDark, Theme::Contrast contrast) {
    const Theme& theme = isDark ? Theme::dark(contrast) : Theme::light(contrast);
    QApplication::setPalette(theme.palette());
    QToolTip::setPalette(theme.palette());
}

void Look::follow(const SystemAppearance& desktop) {
    const auto apply = [&desktop] {
        setDark(desktop.isDark(), desktop.contrast());
        if (auto* const style = qobject_cast<LumoraStyle*>(QApplication::style()))
            style->setMotion(desktop.reducesMotion() ? LumoraStyle::Motion::Reduced
                                                     : LumoraStyle::Motion::Usual);
    };
    apply();
    QObject::connect(&desktop, &SystemAppearance::changed, &desktop, apply);
}
