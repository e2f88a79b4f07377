// SPDX-License-Identifier: MIT
#pragma once

#include "shell/MessageStrip.h"
#include "shell/OperationNotice.h"

#include <QPointer>

#include <chrono>

class QTimer;

/// How the last operation ended, with a button that asks for its transcript: red and lasting
/// after a failure; after a success quiet, and gone by itself unless it is being looked at.
class OperationStrip final : public MessageStrip {
    Q_OBJECT

public:
    /// Where it stands: across the column, or as a card of its own above a sheet's panel.
    enum class Place { Column, Sheet };

    static constexpr int height = 38;
    /// How long a success is told.
    static constexpr std::chrono::seconds successDuration{10};

    /// The notice may end first.
    OperationStrip(OperationNotice& notice, Place place, QWidget* parent);

    /// Brew's own reason, behind the message; may be "".
    [[nodiscard]] QString reason() const;

Q_SIGNALS:
    void outputRequested();

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void tell();
    void countDown();

    QPointer<OperationNotice> m_notice;
    Place m_place;
    ElidedLabel* m_reason;
    QTimer* m_timer;
};
