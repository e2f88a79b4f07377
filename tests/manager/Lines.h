// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// The lines of an expected sequence as a test writes it down: indented, blank ones left out.
[[nodiscard]] inline QStringList lines(const QString& text) {
    QStringList lines;
    for (const QString& line : text.split(u'\n', Qt::SkipEmptyParts)) {
        if (const QString trimmed = line.trimmed(); !trimmed.isEmpty())
            lines.append(trimmed);
    }
    return lines;
}
