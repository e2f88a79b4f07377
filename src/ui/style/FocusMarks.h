// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QWidget;

/// Marks where the keyboard is while it is used, and no longer when the mouse is: Qt notices
/// nothing but the Tab key, and never goes back. An event filter for the application.
class FocusMarks final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Marks it in this window as if a key had been pressed.
    static void show(QWidget* window);

    bool eventFilter(QObject* watched, QEvent* event) override;
};
