// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// What would stand on a terminal after this had been printed there.
///
/// Colours, titles and the like leave nothing; of what a carriage return or a backspace has
/// written over only the last remains. A sequence that is broken off ends with its line, so that
/// no more is lost. All other characters stay as they are.
[[nodiscard]] QString terminalText(const QString& printed);
