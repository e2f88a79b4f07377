// SPDX-License-Identifier: MIT
#include "Preferences.h"

#include <QFileInfo>
#include <QSettings>
#include <QTemporaryFile>

namespace {

/// Qt 6.4 lets a new file that the disk had no room for take the place of the old one.
bool hasRoomForAnotherOf(const QString& path) {
    const qint64 size = QFileInfo(path).size();
    if (size == 0)
        return true;
    // Besides, there will be a lock, and every file takes whole blocks.
    constexpr qint64 blocks = 16 * 1024;
    const QByteArray content(size + blocks, '\0');
    QTemporaryFile trial(path);
    return trial.open() && trial.write(content) == content.size() && trial.flush();
}

} // namespace

void Preferences::store(const QString& key, const QVariant& value) {
    QSettings preferences;
    if (hasRoomForAnotherOf(preferences.fileName()))
        preferences.setValue(key, value);
}

void Preferences::forget(const QString& key) {
    QSettings preferences;
    if (hasRoomForAnotherOf(preferences.fileName()))
        preferences.remove(key);
}
