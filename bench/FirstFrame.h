// SPDX-License-Identifier: MIT
#pragma once

#include <QEvent>
#include <QWidget>

#include <cstdio>
#include <cstdlib>
#include <string_view>

/// Tells the world when a window has painted its first frame: writes one line to standard
/// output, and ends the process there if it is to.
class FirstFrame final : public QObject {
public:
    enum class Then { GoOn, Exit };

    /// What the program was asked for, by a last argument that is nobody else's.
    [[nodiscard]] static Then takeLast(int& argc, char* argv[]) {
        if (std::string_view(argv[argc - 1]) != "--exit")
            return Then::GoOn;
        argv[--argc] = nullptr;
        return Then::Exit;
    }

    FirstFrame(QWidget* window, Then then) : m_window(window), m_then(then) {
        window->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == m_window && event->type() == QEvent::Paint) {
            m_window->removeEventFilter(this);
            // After this turn, in which the frame goes to the window system.
            QMetaObject::invokeMethod(this, &FirstFrame::tell, Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void tell() const {
        std::puts("first frame");
        std::fflush(stdout);
        if (m_then == Then::Exit)
            std::_Exit(0);
    }

    QWidget* m_window;
    Then m_then;
};
