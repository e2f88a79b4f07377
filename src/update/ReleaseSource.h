// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Where releases are published: a service that answers as GitHub's does, and the account
/// there that owns the releases' repository.
struct ReleaseSource final {
    /// The service's address without a slash at its end.
    QString api;
    QString owner;
};
