// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <sys/wait.h>
#include <unistd.h>

#ifdef __APPLE__
#include <util.h>
#else
#include <pty.h>
#endif

#include <cerrno>
#include <csignal>
#include <utility>

/// A process that was started from a terminal of its own, as users of a shell start one.
class TerminalProcess final {
public:
    /// `line` is what a shell runs; let it exec the program, so that there is no other.
    explicit TerminalProcess(const QByteArray& line) {
        m_pid = ::forkpty(&m_terminal, nullptr, nullptr, nullptr);
        if (m_pid == 0) {
            ::execl("/bin/sh", "sh", "-c", line.constData(), nullptr);
            ::_exit(127);
        }
    }

    TerminalProcess(const TerminalProcess&) = delete;
    TerminalProcess& operator=(const TerminalProcess&) = delete;

    ~TerminalProcess() {
        closeTerminal();
        if (!hasEnded()) {
            ::kill(m_pid, SIGKILL);
            ::waitpid(m_pid, nullptr, 0);
        }
    }

    [[nodiscard]] pid_t id() const { return m_pid; }

    [[nodiscard]] bool hasEnded() {
        if (!m_hasEnded)
            m_hasEnded = ::waitpid(m_pid, nullptr, WNOHANG) != 0;
        return m_hasEnded;
    }

    void send(int signal) const { ::kill(m_pid, signal); }

    void type(char key) const {
        if (::write(m_terminal, &key, 1) != 1)
            qFatal("The terminal takes no key");
    }

    void closeTerminal() {
        if (m_terminal >= 0)
            ::close(std::exchange(m_terminal, -1));
    }

    /// Blocks until the process prints something.
    void waitForOutput() const {
        char byte{};
        while (::read(m_terminal, &byte, 1) < 0 && errno == EINTR) {
        }
    }

private:
    int m_terminal{-1};
    pid_t m_pid{-1};
    bool m_hasEnded{false};
};
