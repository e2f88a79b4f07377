// SPDX-License-Identifier: MIT
#include "style/Look.h"

#include "style/FocusMarks.h"
#include "style/LumoraStyle.h"
#include "style/Symbol.h"
#include "style/SystemAppearance.h"
#include "style/Typography.h"

#include <QApplication>
#include <QIcon>
#include <QStyleHints>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

void wear(const Theme& theme) {
    QApplication::setPalette(theme.palette());
    QToolTip::setPalette(theme.palette());
}

const Theme& themeOf(bool isDark, Theme::Contrast contrast) {
    return isDark ? Theme::dark(contrast) : Theme::light(contrast);
}

} // namespace

void Look::setUp() {
    // Drawn in the few small sizes that a window system is given. All of a picture of 512 pixels,
    // decoded and sent, would take a fifth of the start.
    QApplication::setWindowIcon(Symbol::drawing(u":/Lumora.svg"_s));
#ifndef Q_OS_MACOS
    QApplication::setStyle(new LumoraStyle);
#endif
    QCoreApplication::instance()->installEventFilter(new FocusMarks(QCoreApplication::instance()));
    // After the style, which takes the tool tips' font away.
    QApplication::setFont(Typography::font(Typography::body));
    QToolTip::setFont(Typography::font(Typography::caption));
}

void Look::setDark(bool isDark, Theme::Contrast contrast) {
#if defined(Q_OS_MACOS) && QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    // There the system draws title bar and controls, and would do so for its own appearance.
    QGuiApplication::styleHints()->setColorScheme(isDark ? Qt::ColorScheme::Dark
                                                         : Qt::ColorScheme::Light);
#endif
    wear(themeOf(isDark, contrast));
}

void Look::follow(const SystemAppearance& desktop) {
    const auto apply = [&desktop] {
        wear(themeOf(desktop.isDark(), desktop.contrast()));
        if (auto* const style = qobject_cast<LumoraStyle*>(QApplication::style()))
            style->setMotion(desktop.reducesMotion() ? LumoraStyle::Motion::Reduced
                                                     : LumoraStyle::Motion::Usual);
    };
    apply();
    QObject::connect(&desktop, &SystemAppearance::changed, &desktop, apply);
}
