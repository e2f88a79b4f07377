// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

class QJsonObject;

/// What the release service says about the latest release, as far as an update needs it.
struct LatestRelease final {
    struct Archive final {
        QString address;
        /// What the release says about its content; empty if it says nothing.
        QString digest;
    };

    /// The tag without the "v" that it may begin with.
    QString version;
    /// The first archive among the release's assets, if there is one with an address.
    std::optional<Archive> archive;

    /// Nothing for an answer without a tag.
    [[nodiscard]] static std::optional<LatestRelease> from(const QJsonObject& answer);
};
