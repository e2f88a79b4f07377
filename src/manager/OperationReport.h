// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// How a package or tap operation ended, for whoever tells the user.
struct OperationReport final {
    bool succeeded{};
    /// The transcript's first line, without its line break.
    QString start{};
    /// The transcript's last line; "" if the manager adds none: taps, and a brew that could not
    /// be started.
    QString closing{};
    /// All that this run wrote to `operationOutput`, as it stands.
    QString transcript{};

    bool operator==(const OperationReport&) const = default;
};
