// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/Alert.h"

/// Asks by a message box, as Alert::ask() does where that is what the platform's users expect.
QWidget* openAlertBox(QWidget* parent, const Alert::Question& question,
                      std::function<void(qsizetype)> answered);
