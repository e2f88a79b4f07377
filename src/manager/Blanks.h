// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

/// The text without the blanks at both ends: tabs and Unicode's space characters, but no line
/// breaks.
[[nodiscard]] QStringView trimmedOfBlanks(QStringView text);
