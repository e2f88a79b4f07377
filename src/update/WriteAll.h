// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>

class QIODevice;

/// Writes all of the bytes; false with the device's error string set if that fails.
///
/// A disk that is full takes what fits, and says why only when it is asked to take the rest.
[[nodiscard]] bool writeAll(QIODevice& device, QByteArrayView bytes);
