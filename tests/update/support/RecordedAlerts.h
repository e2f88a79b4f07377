// SPDX-License-Identifier: MIT
#pragma once

#include "UpdateAlerts.h"

#include <QList>

/// Answers the updater's alerts at once and remembers them.
class RecordedAlerts final : public UpdateAlerts {
public:
    /// What to answer when an update is offered.
    enum class Answer { UpdateNow, Later };

    explicit RecordedAlerts(Answer answer = Answer::Later) : m_answer(answer) {}

    QCoro::Task<qsizetype> show(Alert alert) override {
        m_shown.append(alert);
        const bool isQuestion = alert.buttons.size() > 1;
        co_return isQuestion ? static_cast<qsizetype>(m_answer) : 0;
    }

    [[nodiscard]] const QList<Alert>& shown() const { return m_shown; }

private:
    Answer m_answer;
    QList<Alert> m_shown;
};
