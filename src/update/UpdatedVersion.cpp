// SPDX-License-Identifier: MIT
#include "UpdatedVersion.h"

#include <QSettings>

using namespace Qt::StringLiterals;

namespace {

const QString updatedVersionKey = u"Lumora.updatedToVersion"_s;

} // namespace

void UpdatedVersion::store(const QString& version) {
    QSettings preferences;
    preferences.setValue(updatedVersionKey, version);
    preferences.sync();
}

std::optional<QString> UpdatedVersion::take() {
    QSettings preferences;
    const QVariant value = preferences.value(updatedVersionKey);
    if (value.typeId() != QMetaType::QString)
        return std::nullopt;
    preferences.remove(updatedVersionKey);
    preferences.sync();
    return value.toString();
}
