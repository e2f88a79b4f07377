// SPDX-License-Identifier: MIT
#pragma once

class QString;
class QVariant;

/// Changes what the application's default QSettings hold, and makes sure that a disk without
/// room doesn't cost what they held before: then nothing is changed.
namespace Preferences {

void store(const QString& key, const QVariant& value);
void forget(const QString& key);

} // namespace Preferences
