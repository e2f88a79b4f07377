// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

/// A session bus of this test's own, on which the desktop's services are not to be had.
class SessionBus final {
public:
    SessionBus() {
        using namespace Qt::StringLiterals;
        QFile configuration(m_folder.filePath(u"session.conf"_s));
        if (!configuration.open(QIODevice::WriteOnly))
            qFatal("The bus can't be configured");
        configuration.write(
            "<busconfig><listen>unix:dir=" + m_folder.path().toUtf8() +
            "</listen><policy context='default'><allow own='*'/>"
            "<allow send_destination='*' eavesdrop='true'/><allow eavesdrop='true'/>"
            "</policy></busconfig>");
        configuration.close();
        m_daemon.start(u"dbus-daemon"_s, {u"--config-file="_s + configuration.fileName(),
                                          u"--nofork"_s, u"--print-address=1"_s});
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
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
};
