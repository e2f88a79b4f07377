// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

/// An object that announces, before each change of a published property, that one is coming.
class ObservableObject : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// A property is about to change; it still has its old value.
    void objectWillChange();
};
