// SPDX-License-Identifier: MIT
#include "UpdateAlertBoxes.h"

#include "widgets/Alert.h"
#include "widgets/DisplayText.h"

#include <QCoroFuture>
#include <QMessageBox>
#include <QPromise>
#include <QPushButton>

#include <memory>
#include <utility>

namespace {

using Answer = std::shared_ptr<QPromise<qsizetype>>;

void answer(const Answer& promise, qsizetype button) {
    promise->addResult(button);
    promise->finish();
}

void open(QWidget* window, const UpdateAlerts::Alert& alert, const Answer& promise) {
    auto* const box = new QMessageBox(window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setIcon(alert.style == UpdateAlerts::Style::Warning ? QMessageBox::Warning
                                                             : QMessageBox::Information);
    Alert::setPlainTexts(box, DisplayText::line(alert.title), alert.text);
    QList<QAbstractButton*> buttons;
    for (const QString& text : alert.buttons) {
        const auto role = buttons.isEmpty() ? QMessageBox::AcceptRole : QMessageBox::RejectRole;
        buttons.append(box->addButton(DisplayText::label(text), role));
    }
    box->setDefaultButton(qobject_cast<QPushButton*>(buttons.first()));
    box->setEscapeButton(buttons.last());
    const qsizetype last = buttons.size() - 1;
    QObject::connect(box, &QMessageBox::finished, box, [box, buttons, promise, last] {
        // A box that is closed knows of no button yet.
        const qsizetype chosen = buttons.indexOf(box->clickedButton());
        answer(promise, chosen < 0 ? last : chosen);
    });
    QObject::connect(box, &QObject::destroyed, box, [promise, last] {
        if (!promise->future().isFinished())
            answer(promise, last);
    });
    box->setWindowModality(Qt::ApplicationModal);
    box->show();
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
