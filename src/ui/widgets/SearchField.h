// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/TextField.h"

/// The text field of a page's header, with a magnifier in front. Escape clears it.
class SearchField final : public TextField {
    Q_OBJECT

public:
    explicit SearchField(const QString& placeholder, QWidget* parent = nullptr);

Q_SIGNALS:
    /// The arrow key leads out of the field, to what lies below it.
    void leftDownwards();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};
