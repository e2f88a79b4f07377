// SPDX-License-Identifier: MIT
#pragma once

#include <QTemporaryDir>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

/// A session bus that takes connections and never says a word.
class SilentBus final {
public:
    SilentBus() : m_socket(::socket(AF_UNIX, SOCK_STREAM, 0)) {
        const QByteArray path = m_folder.filePath(QStringLiteral("bus")).toUtf8();
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, path.constData(), sizeof address.sun_path - 1);
        const auto* const name = reinterpret_cast<const sockaddr*>(&address);
        if (::bind(m_socket, name, sizeof address) != 0 || ::listen(m_socket, 1) != 0)
            qFatal("There is no socket for a bus");
        m_address = "unix:path=" + path;
    }

    ~SilentBus() { ::close(m_socket); }

    Q_DISABLE_COPY_MOVE(SilentBus)

    [[nodiscard]] QByteArray address() const { return m_address; }

    /// Whether somebody waits for its first word.
    [[nodiscard]] bool hasCaller() const {
        pollfd caller{.fd = m_socket, .events = POLLIN, .revents = 0};
        return ::poll(&caller, 1, 0) == 1;
    }

private:
    QTemporaryDir m_folder;
    int m_socket;
    QByteArray m_address;
};
