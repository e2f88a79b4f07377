// SPDX-License-Identifier: MIT
#include "widgets/OpenAddress.h"

#include <QDesktopServices>
#include <QUrl>

void openAddress(const QString& address) {
    const QUrl url(address, QUrl::StrictMode);
    if (url.isValid() && !url.isEmpty())
        QDesktopServices::openUrl(url);
}
