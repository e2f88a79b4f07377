// SPDX-License-Identifier: MIT
#pragma once

class QUrl;

/// What the updater may fetch from: what arrives is going to run as the user.
namespace AddressRule {

/// https, or plain http that doesn't leave this machine.
[[nodiscard]] bool isAllowed(const QUrl& address);

/// A redirect stays allowed and never gives up https.
[[nodiscard]] bool isAllowedRedirect(const QUrl& from, const QUrl& to);

} // namespace AddressRule
