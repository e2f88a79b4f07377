// SPDX-License-Identifier: MIT
#pragma once

#include <QCoroTask>

#include <memory>

class QIODevice;
class QNetworkAccessManager;
class QNetworkRequest;

/// Fetches a resource into an open device that lives until the task ends, and gives the
/// answer's status code; 0 for an answer without one.
///
/// Only addresses that AddressRule allows are asked, redirects included. Throws
/// UpdateFailure when there is no whole answer: no connection, none that can be trusted,
/// an answer cut short, or a device that can't be written.
[[nodiscard]] QCoro::Task<int> httpGet(std::shared_ptr<QNetworkAccessManager> network,
                                       QNetworkRequest request, QIODevice* sink);
