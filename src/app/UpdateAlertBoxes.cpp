// SPDX-License-Identifier: MIT
#include "UpdateAlertBoxes.h"

#include "widgets/Alert.h"

#include <QCoroFuture>
#include <QPromise>

#include <memory>
#include <utility>

namespace {

using Answer = std::shared_ptr<QPromise<qsizetype>>;

void answer(const Answer& promise, qsizetype button) {
    promise->addResult(button);
    promise->finish();
}

void open(QWidget* window, const UpdateAlerts::Alert& alert, const Answer& promise) {
    const bool isWarning = alert.style == UpdateAlerts::Style::Warning;
    const QWidget* const shown =
        Alert::ask(window,
                   {.style = isWarning ? Alert::Style::Warning : Alert::Style::Informational,
                    .title = alert.title,
                    .message = alert.text,
                    .answers = alert.buttons},
                   [promise](qsizetype button) { answer(promise, button); });
    QObject::connect(shown, &QObject::destroyed, shown, [promise, last = alert.buttons.size() - 1] {
        if (!promise->future().isFinished())
            answer(promise, last);
    });
}

} // namespace

QCoro::Task<qsizetype> UpdateAlertBoxes::show(Alert alert) {
    const QPointer<QWidget> window = m_window;
    const auto promise = std::make_shared<QPromise<qsizetype>>();
    promise->start();
    const QFuture<qsizetype> own = promise->future();
    const QFuture<qsizetype> before = std::exchange(m_lastAnswer, own);
    if (before.isValid())
        co_await before;
    if (!window)
        co_return alert.buttons.size() - 1;
    open(window, alert, promise);
    co_return co_await own;
}
