// SPDX-License-Identifier: MIT
#include "shell/DesktopBus.h"

#include <QDBusPendingCallWatcher>
#include <QPromise>

#include <limits>
#include <memory>
#include <system_error>
#include <thread>
#include <utility>

DesktopBus::DesktopBus() {
    connect(&m_bus, &QFutureWatcher<QDBusConnection>::finished, this, [this] {
        for (const auto& send : std::exchange(m_due, {}))
            send();
    });
}

void DesktopBus::call(const QDBusMessage& call, const Answered& answered) {
    const bool isFirst = m_due.empty();
    if (isFirst && m_bus.future().isResultReadyAt(0)) {
        send(call, answered);
        return;
    }
    m_due.emplace_back([this, call, answered] { send(call, answered); });
    if (isFirst)
        connectToBus();
}

void DesktopBus::connectToBus() {
    const auto promise = std::make_shared<QPromise<QDBusConnection>>();
    promise->start();
    m_bus.setFuture(promise->future());
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

void DesktopBus::send(const QDBusMessage& call, const Answered& answered) {
    // As long as the bus lives, since what comes after the usual 25 seconds matters, too: it may
    // be a promise to keep the system awake.
    constexpr int forEver = std::numeric_limits<int>::max();
    const QDBusPendingCall pending = m_bus.result().asyncCall(call, forEver);
    if (!answered || !m_bus.result().isConnected())
        return;
    auto* const watcher = new QDBusPendingCallWatcher(pending, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, answered] {
        watcher->deleteLater();
        answered(watcher->reply());
    });
}
