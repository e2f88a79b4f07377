// SPDX-License-Identifier: MIT
#include "WriteAll.h"

#include <QIODevice>

bool writeAll(QIODevice& device, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const qint64 count = device.write(bytes.data(), bytes.size());
        if (count <= 0)
            return false;
        bytes = bytes.sliced(count);
    }
    return true;
}
