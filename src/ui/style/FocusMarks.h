// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

/// Marks where the keyboard is while it is used, and no longer when the mouse is: Qt notices
/// nothing but the Tab key, and never goes back. An event filter for the application.
class FocusMarks final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override;
};
