// SPDX-License-Identifier: MIT
#include "AddressRule.h"

#include <QHostAddress>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

bool isEncrypted(const QUrl& address) {
    return address.scheme() == "https"_L1 && !address.host().isEmpty();
}

bool isLoopback(const QString& host) {
    return host == "localhost"_L1 || QHostAddress(host).isLoopback();
}

} // namespace

bool AddressRule::isAllowed(const QUrl& address) {
    return isEncrypted(address) || (address.scheme() == "http"_L1 && isLoopback(address.host()));
}

bool AddressRule::isAllowedRedirect(const QUrl& from, const QUrl& to) {
    return isAllowed(to) && (isEncrypted(to) || !isEncrypted(from));
}
