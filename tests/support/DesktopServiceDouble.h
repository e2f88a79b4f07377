// SPDX-License-Identifier: MIT
#pragma once

#include "SessionBus.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QMap>

#include <utility>

/// Stands in for a service of the desktop: takes every call, remembers it and answers as it is
/// told to. The services that a test puts on its bus are as many processes to whoever calls.
class DesktopServiceDouble final : public QDBusVirtualObject {
public:
    enum class Manner { Answers, Refuses, KeepsSilent };

    DesktopServiceDouble(const SessionBus& bus, const QString& name, const QString& path,
                         Manner manner = Manner::Answers)
        : m_bus(QDBusConnection::connectToBus(bus.address(), name)), m_manner(manner) {
        if (!m_bus.registerVirtualObject(path, this) || !m_bus.registerService(name))
            qFatal("%s can't be reached on the bus", qUtf8Printable(name));
    }

    ~DesktopServiceDouble() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    Q_DISABLE_COPY_MOVE(DesktopServiceDouble)

    /// What a method answers; others answer 1, 2, 3 and so on.
    void setAnswer(const QString& method, const QVariant& answer) { m_answers[method] = answer; }

    void setManner(Manner manner) { m_manner = manner; }

    /// Answers what was kept waiting, and from now on at once.
    void breakSilence() {
        m_manner = Manner::Answers;
        for (const QDBusMessage& call : std::exchange(m_waiting, {}))
            reply(call, m_bus);
    }

    /// The calls so far: method, types of the arguments, arguments.
    [[nodiscard]] QStringList calls() const { return m_calls; }

    /// The arguments of the last call.
    [[nodiscard]] QVariantList arguments() const { return m_arguments; }

    /// The unique name of the last caller is on the bus as long as its process lives.
    [[nodiscard]] bool isCallerThere() const {
        return m_bus.interface()->isServiceRegistered(m_caller);
    }

    /// Returns when all that this process has sent is here, and what was answered is there.
    void settle() const {
        const QDBusConnection callers = QDBusConnection::sessionBus();
        // Whoever is on the bus gets what was sent before, then the answer to this.
        for (const QDBusConnection& bus : {callers, m_bus, callers})
            static_cast<void>(bus.interface()->isServiceRegistered(QStringLiteral("nobody.here")));
        QCoreApplication::processEvents();
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        m_caller = message.service();
        m_arguments = message.arguments();
        QStringList words{message.member(), u'(' + message.signature() + u')'};
        for (const QVariant& argument : std::as_const(m_arguments))
            words.append(textOf(argument));
        m_calls.append(words.join(u' '));
        switch (m_manner) {
        case Manner::Answers:
            reply(message, bus);
            break;
        case Manner::Refuses:
            bus.send(message.createErrorReply(QDBusError::AccessDenied, QStringLiteral("no")));
            break;
        case Manner::KeepsSilent:
            m_waiting.append(message);
            break;
        }
        return true;
    }

    QString introspect(const QString& /*path*/) const override { return {}; }

private:
    void reply(const QDBusMessage& call, const QDBusConnection& bus) {
        const auto answer = m_answers.constFind(call.member());
        bus.send(call.createReply(answer != m_answers.cend() ? *answer : QVariant(++m_number)));
    }

    static QString textOf(const QVariant& argument) {
        if (argument.metaType() == QMetaType::fromType<QDBusArgument>()) {
            QStringList words;
            const auto map = qdbus_cast<QVariantMap>(argument.value<QDBusArgument>());
            for (auto entry = map.cbegin(); entry != map.cend(); ++entry)
                words.append(entry.key() + u'=' + textOf(entry.value()));
            return u'{' + words.join(u' ') + u'}';
        }
        if (argument.metaType() == QMetaType::fromType<QStringList>())
            return u'[' + argument.toStringList().join(u' ') + u']';
        if (argument.metaType() == QMetaType::fromType<uchar>())
            return QStringLiteral("byte ") + QString::number(argument.toUInt());
        return u'\'' + argument.toString() + u'\'';
    }

    QDBusConnection m_bus;
    Manner m_manner;
    QMap<QString, QVariant> m_answers;
    QList<QDBusMessage> m_waiting;
    QStringList m_calls;
    QVariantList m_arguments;
    QString m_caller;
    uint m_number{};
};
