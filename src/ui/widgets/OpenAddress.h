// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Opens an address in the desktop's browser or mail client. Does nothing if it can't be
/// parsed; a desktop that can't open it isn't reported either.
void openAddress(const QString& address);
