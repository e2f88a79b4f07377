// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>

/// A session bus of this test's own.
class SessionBus final {
public:
    SessionBus() {
        using namespace Qt::StringLiterals;
        m_daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address=1"_s,
                                          u"--address=unix:tmpdir=/tmp"_s});
        if (!m_daemon.waitForStarted() || !m_daemon.waitForReadyRead())
            qFatal("dbus-daemon doesn't start; it is in the package dbus");
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    }

    ~SessionBus() {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    Q_DISABLE_COPY_MOVE(SessionBus)

    [[nodiscard]] QString address() const { return m_address; }

private:
    QProcess m_daemon;
    QString m_address;
};
