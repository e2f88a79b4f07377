// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFutureWatcher>

#include <functional>
#include <vector>

/// Calls the desktop's services on the session bus without ever waiting, neither for a service
/// nor for the bus itself.
///
/// The first call connects to the bus; where there is none, nothing is told. What a service
/// answers late is told late, and nothing after the destructor.
class DesktopBus final : public QObject {
    Q_OBJECT

public:
    using Answered = std::function<void(const QDBusMessage& reply)>;

    DesktopBus();

    /// Sends a method call and tells the reply, or the error: there may be no such service.
    void call(const QDBusMessage& call, const Answered& answered = {});

private:
    void connectToBus();
    void send(const QDBusMessage& call, const Answered& answered);

    QFutureWatcher<QDBusConnection> m_bus;
    /// Calls that came before the bus did.
    std::vector<std::function<void()>> m_due;
};
