// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/Alert.h"
#include "widgets/Sheet.h"

class PushButton;

/// An alert on a card inside its window.
class AlertCard final : public Sheet {
    Q_OBJECT

public:
    /// Opens over the window.
    AlertCard(const Alert::Question& question, QWidget* window);

Q_SIGNALS:
    /// The card is closed by then.
    void answered(qsizetype answer);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] PushButton* makeButton(const Alert::Question& question, qsizetype answer);
    void give(qsizetype answer);

    /// What Return gives, wherever on the card the keyboard is.
    qsizetype m_default;
};
