// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// The version being installed, kept in the preferences from the old application to the
/// new one.
namespace UpdatedVersion {

/// On disk when it returns: the process may be about to end.
void store(const QString& version);

/// Gives what is stored, once.
[[nodiscard]] std::optional<QString> take();

} // namespace UpdatedVersion
