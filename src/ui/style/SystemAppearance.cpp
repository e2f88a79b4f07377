// SPDX-License-Identifier: MIT
#include "style/SystemAppearance.h"

#include "style/Theme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace {

const QString portalService = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString settingsInterface = u"org.freedesktop.portal.Settings"_s;
const QString appearanceGroup = u"org.freedesktop.appearance"_s;
const QString colorSchemeKey = u"color-scheme"_s;

/// The portal wraps a value in one variant more than its name suggests.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

SystemAppearance::SystemAppearance(QObject* parent)
    : QObject(parent), m_isDark(&Theme::of(QGuiApplication::palette()) == &Theme::dark()) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    // Until the type has a name the bus finds no slot that takes it.
    qRegisterMetaType<QDBusVariant>("QDBusVariant");
    bus.connect(portalService, portalPath, settingsInterface, u"SettingChanged"_s, this,
                SLOT(onSettingChanged(QString, QString, QDBusVariant)));

    QDBusMessage read =
        QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, u"Read"_s);
    read << appearanceGroup << colorSchemeKey;
    // The window is not shown before: a light flash in a dark room is worse than this wait.
    constexpr int patience = 150;
    const QDBusMessage reply = bus.call(read, QDBus::Block, patience);
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
        setColorScheme(reply.arguments().constFirst());
}

void SystemAppearance::onSettingChanged(const QString& group, const QString& key,
                                        const QDBusVariant& value) {
    if (group == appearanceGroup && key == colorSchemeKey) {
        setColorScheme(value.variant());
        Q_EMIT changed();
    }
}

void SystemAppearance::setColorScheme(const QVariant& value) {
    // 1 prefers dark, 2 prefers light, 0 has no preference.
    enum : uint { NoPreference, PreferDark, PreferLight };

    const uint scheme = unwrapped(value).toUInt();
    if (scheme == PreferDark || scheme == PreferLight)
        m_isDark = scheme == PreferDark;
}
