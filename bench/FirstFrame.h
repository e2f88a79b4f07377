// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <cstdlib>

/// Tells the world when a window has painted its first frame: writes one line to standard
/// output, and ends the process there if it was started with --exit.
class FirstFrame final : public QObject {
public:
    explicit FirstFrame(QWidget* window) : m_window(window) { window->installEventFilter(this); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == m_window && event->type() == QEvent::Paint) {
            m_window->removeEventFilter(this);
            // After this turn, in which the frame goes to the window system.
            QTimer::singleShot(0, this, [] {
                std::puts("first frame");
                std::fflush(stdout);
                if (QApplication::arguments().contains(QStringLiteral("--exit")))
                    std::_Exit(0);
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget* m_window;
};
