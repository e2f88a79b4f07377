// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// One configured tap.
struct BrewTap final {
    /// As brew lists it, for example user/repo.
    QString name;

    [[nodiscard]] QString id() const { return name; }
};
