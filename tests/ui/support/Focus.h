// SPDX-License-Identifier: MIT
#pragma once

#include <QList>

#include <functional>

class QWidget;

/// Where the keyboard can go.
namespace Focus {

/// The widgets below `root` that can be seen and take the focus from the Tab key.
[[nodiscard]] QList<QWidget*> stopsIn(const QWidget& root);

/// Presses Tab until the focus is on such a widget; false if it comes round without.
bool tabTo(const std::function<bool(const QWidget&)>& isWanted);
/// The same, by object name.
bool tabTo(const QString& objectName);

} // namespace Focus
