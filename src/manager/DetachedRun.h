// SPDX-License-Identifier: MIT
#pragma once

#include "RunBrewSync.h"

#include <QFuture>
#include <QStringList>

#include <memory>

/// Runs `brew` on a thread of its own that nobody waits for, and gives the outcome to
/// whoever awaits the future.
///
/// Not a thread of the shared pool: that has as many as there are cores, and one long
/// upgrade per core would keep every later command waiting. The outcome is shared, so
/// that a report of megabytes isn't copied on its way to the interface thread.
[[nodiscard]] QFuture<std::shared_ptr<const RunOutcome>> runDetached(const QString& brewPath,
                                                                     const QStringList& arguments);
