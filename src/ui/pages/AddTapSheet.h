// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/Sheet.h"

class PushButton;
class TextField;

/// Asks for the name of a tap to add. It stays open until the tap is added or the user gives up.
class AddTapSheet final : public Sheet {
    Q_OBJECT

public:
    explicit AddTapSheet(QWidget* window);

    /// Whether an add is running: then there is a spinner, and nothing more can be added.
    void setAdding(bool isAdding);

Q_SIGNALS:
    /// The user wants this to be added; blanks around it are still there.
    void addRequested(const QString& typed);

private:
    void updateButtons();
    void requestAdd();

    TextField* m_field;
    QWidget* m_progress;
    PushButton* m_add;
    bool m_isAdding{false};
};
