// SPDX-License-Identifier: MIT
#pragma once

#include "style/Theme.h"

#include <QString>

struct OperationReport;

/// What the window says of an operation that has ended, in words of the manager's and of brew's,
/// made harmless to show.
struct OperationSummary final {
    explicit OperationSummary(const OperationReport& report);

    bool succeeded;
    /// What was written, as it would stand on a terminal; without its middle where that is
    /// thousands of lines.
    QString transcript;
    /// How it ended, on one line: the closing text of a failure, the last words of a success.
    QString title;
    /// Brew's own reason for a failure, on one line, unless the title says it; may be "".
    QString reason;

    /// Title and reason, where there is room for one text only.
    [[nodiscard]] QString line() const;

    [[nodiscard]] QString symbol() const;
    [[nodiscard]] ThemeColor color() const;
};
