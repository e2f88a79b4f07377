// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

/// The part of a published property that Qt's signals need: they can't live in a template.
class PublishedSignal final : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void changed();
};
