// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>

/// What a service of the desktop's is asked to do.
struct DesktopCall final {
    QString service{};
    QString path{};
    QString interface {};
    QString method{};
    QVariantList arguments{};
};

/// Calls the desktop's services on the session bus without ever waiting, neither for a service
/// nor for the bus itself.
///
/// The first call connects to the bus; where there is none, nothing is told. What a service
/// answers late is told late, and nothing after the destructor. Built without D-Bus it calls
/// nobody.
class DesktopBus final : public QObject {
    Q_OBJECT

public:
    /// Takes what the service answers; nothing if it refuses, or isn't there.
    using Answered = std::function<void(const std::optional<QVariantList>& answer)>;

    DesktopBus();
    ~DesktopBus() override;

    /// Calls a method and tells the answer.
    void call(const DesktopCall& call, const Answered& answered = {});

private:
    struct Connection;

    void connectToBus();
    void send(const DesktopCall& call, const Answered& answered);

    std::unique_ptr<Connection> m_connection;
};
