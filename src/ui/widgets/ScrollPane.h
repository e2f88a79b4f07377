// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollArea>

/// A scroll area that can be read by keyboard: Home and End lead to its ends, and a mark around it
/// tells that it has the focus.
class ScrollPane final : public QScrollArea {
    Q_OBJECT

public:
    /// Room for the mark around the content.
    static constexpr int focusMargin = 2;

    /// Takes the content over.
    explicit ScrollPane(QWidget* content, QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
};
