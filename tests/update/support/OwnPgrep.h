// SPDX-License-Identifier: MIT
#pragma once

#include "ChangedVariable.h"

#include <QTemporaryDir>

/// A `pgrep` that comes first on the path for as long as this lives, and sees this process's
/// children only.
///
/// The update's script waits for every process called Lumora: the user may well have one, and
/// so may the test beside this one.
class OwnPgrep final {
public:
    OwnPgrep();

private:
    QTemporaryDir m_folder;
    ChangedVariable m_path{"PATH", m_folder.path().toUtf8() + ':' + qgetenv("PATH")};
};
