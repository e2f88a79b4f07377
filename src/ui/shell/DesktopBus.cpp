// SPDX-License-Identifier: MIT
#include "shell/DesktopBus.h"

#ifdef LUMORA_DBUS

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFutureWatcher>
#include <QPromise>

#include <limits>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

struct DesktopBus::Connection final {
    QFutureWatcher<QDBusConnection> bus;
    /// Calls that came before the bus did.
    std::vector<std::function<void()>> due;
};

DesktopBus::DesktopBus() : m_connection(std::make_unique<Connection>()) {
    connect(&m_connection->bus, &QFutureWatcher<QDBusConnection>::finished, this, [this] {
        for (const auto& send : std::exchange(m_connection->due, {}))
            send();
    });
}

void DesktopBus::call(const DesktopCall& call, const Answered& answered) {
    const bool isFirst = m_connection->due.empty();
    if (isFirst && m_connection->bus.future().isResultReadyAt(0)) {
        send(call, answered);
        return;
    }
    m_connection->due.emplace_back([this, call, answered] { send(call, answered); });
    if (isFirst)
        connectToBus();
}

void DesktopBus::connectToBus() {
    const auto promise = std::make_shared<QPromise<QDBusConnection>>();
    promise->start();
    m_connection->bus.setFuture(promise->future());
    try {
        // A bus that takes the connection and then keeps silent holds up whoever connects.
        std::thread([promise] {
            promise->addResult(QDBusConnection::sessionBus());
            promise->finish();
        }).detach();
    } catch (const std::system_error&) {
        promise->addResult(QDBusConnection(QString()));
        promise->finish();
    }
}

void DesktopBus::send(const DesktopCall& call, const Answered& answered) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(call.service, call.path, call.interface, call.method);
    message.setArguments(call.arguments);
    // As long as the bus lives, since what comes after the usual 25 seconds matters, too: it may
    // be a promise to keep the system awake.
    constexpr int forEver = std::numeric_limits<int>::max();
    const QDBusConnection bus = m_connection->bus.result();
    const QDBusPendingCall pending = bus.asyncCall(message, forEver);
    if (!answered || !bus.isConnected())
        return;
    auto* const watcher = new QDBusPendingCallWatcher(pending, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, answered] {
        watcher->deleteLater();
        if (watcher->isError())
            answered(std::nullopt);
        else
            answered(watcher->reply().arguments());
    });
}

#else

struct DesktopBus::Connection final {};

DesktopBus::DesktopBus() = default;

void DesktopBus::call(const DesktopCall& /*call*/, const Answered& /*answered*/) {}

#endif

DesktopBus::~DesktopBus() = default;
