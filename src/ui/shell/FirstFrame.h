// SPDX-License-Identifier: MIT
#pragma once

#include <QFuture>
#include <QWidget>

/// The moment at which a window that is being shown has handed its first frame to the window
/// system.
namespace FirstFrame {

/// Is finished then; where no frame comes, as of a minimised window, after a quarter of a second.
[[nodiscard]] QFuture<void> of(QWidget* window);

} // namespace FirstFrame
