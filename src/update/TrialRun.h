// SPDX-License-Identifier: MIT
#pragma once

#include <QCoroTask>
#include <QString>

#include <chrono>

/// Runs a bundle's executable once, without a display, to learn whether it starts and which
/// version it is: true if it says that it is this one, as far as versions are compared.
///
/// One that hasn't answered in time is ended.
[[nodiscard]] QCoro::Task<bool> answersWithVersion(QString executable, QString version,
                                                   std::chrono::milliseconds patience);
