// SPDX-License-Identifier: MIT
#include "shell/FirstFrame.h"

#include <QEvent>
#include <QPromise>
#include <QTimer>

using namespace std::chrono_literals;

namespace {

class Watch final : public QObject {
public:
    explicit Watch(QWidget* window) : QObject(window) {
        constexpr auto patience = 250ms;
        m_promise.start();
        window->installEventFilter(this);
        QTimer::singleShot(patience, this, &Watch::end);
    }

    [[nodiscard]] QFuture<void> future() const { return m_promise.future(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            // The frame goes to the window system at the end of the turn it is painted in.
            QMetaObject::invokeMethod(this, &Watch::end, Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void end() {
        m_promise.finish();
        deleteLater();
    }

    /// Ends what waits for it also when the window goes before.
    QPromise<void> m_promise;
};

} // namespace

QFuture<void> FirstFrame::of(QWidget* window) {
    return (new Watch(window))->future();
}
