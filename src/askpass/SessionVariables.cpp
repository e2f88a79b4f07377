// SPDX-License-Identifier: MIT
#include "SessionVariables.h"

#include <QByteArrayList>

namespace {

constexpr const char* carrier = "HOMEBREW_LUMORA_SESSION";

constexpr const char* names[] = {
    // Where the window is to appear, and how large.
    "DISPLAY", "XAUTHORITY", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "XDG_CURRENT_DESKTOP",
    "QT_QPA_PLATFORM", "QT_SCALE_FACTOR",
    // The desktop's wishes, and who reads the screen to the user.
    "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "AT_SPI_BUS_ADDRESS",
    "QT_LINUX_ACCESSIBILITY_ALWAYS_ON", SessionVariables::appearance,
    // Its language, and Lumora's preferences.
    "LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG", "XDG_CONFIG_HOME"};

} // namespace

void SessionVariables::passOn() {
    QByteArrayList lines;
    for (const char* const name : names) {
        const QByteArray value = qgetenv(name);
        if (!value.isEmpty() && !value.contains('\n'))
            lines.append(name + ('=' + value));
    }
    qputenv(carrier, lines.join('\n'));
}

void SessionVariables::takeUp() {
    if (!qEnvironmentVariableIsSet(carrier))
        return;
    const QByteArrayList lines = qgetenv(carrier).split('\n');
    for (const char* const name : names) {
        // Also those that brew has set itself, such as the language.
        qunsetenv(name);
        const QByteArray start = QByteArray(name) + '=';
        for (const QByteArray& line : lines) {
            if (line.startsWith(start))
                qputenv(name, line.sliced(start.size()));
        }
    }
}
