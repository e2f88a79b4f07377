// SPDX-License-Identifier: MIT
#pragma once

#include <QCoroTask>

class QIODevice;
class QNetworkAccessManager;
class QNetworkRequest;
class QUrl;

/// What the updater may fetch from: what arrives is going to run as the user.
namespace AddressRule {

/// https, or plain http that doesn't leave this machine.
[[nodiscard]] bool isAllowed(const QUrl& address);

/// A redirect stays allowed and never gives up https.
[[nodiscard]] bool isAllowedRedirect(const QUrl& from, const QUrl& to);

} // namespace AddressRule

/// Fetches a resource into an open device and gives the answer's status code; 0 for an answer
/// without one. Only what comes with the status 200 gets into the device. Both it and the manager
/// outlive the task: whoever awaits that may go on in a call from them.
///
/// Only addresses that AddressRule allows are asked, redirects included. Throws
/// UpdateFailure when there is no whole answer: no connection, none that can be trusted,
/// an answer cut short, or a device that can't be written or takes no more.
[[nodiscard]] QCoro::Task<int> httpGet(QNetworkAccessManager* network, QNetworkRequest request,
                                       QIODevice* sink);
