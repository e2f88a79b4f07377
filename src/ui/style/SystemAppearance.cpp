// SPDX-License-Identifier: MIT
#include "style/SystemAppearance.h"

#include <QGuiApplication>
#include <QStyleHints>

#ifdef LUMORA_DBUS

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

namespace {

const QString portalService = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString settingsInterface = u"org.freedesktop.portal.Settings"_s;
const QString appearanceGroup = u"org.freedesktop.appearance"_s;

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
    // clang-format would put blanks into what the meta-object system looks for without.
    // clang-format off
    bus.connect(portalService, portalPath, settingsInterface, u"SettingChanged"_s, this,
                SLOT(onSettingChanged(QString,QString,QDBusVariant)));
    // clang-format on

    QDBusMessage read =
        QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, u"ReadAll"_s);
    read << QStringList{appearanceGroup};
    // The window is not shown before: a light flash in a dark room is worse than this wait.
    constexpr int patience = 150;
    const QDBusMessage reply = bus.call(read, QDBus::Block, patience);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return;
    const auto groups = qdbus_cast<QMap<QString, QVariantMap>>(reply.arguments().constFirst());
    const QVariantMap wishes = groups.value(appearanceGroup);
    for (auto wish = wishes.cbegin(); wish != wishes.cend(); ++wish)
        setWish(wish.key(), wish.value());
}

void SystemAppearance::onSettingChanged(const QString& group, const QString& key,
                                        const QDBusVariant& value) {
    if (group == appearanceGroup && setWish(key, value.variant()))
        Q_EMIT changed();
}

bool SystemAppearance::setWish(const QString& key, const QVariant& value) {
    // Of the colour scheme 0 has no preference.
    enum : uint { PreferDark = 1, PreferLight = 2 };

    enum : uint { HigherContrast = 1 };

    enum : uint { ReducedMotion = 1 };

    const uint wish = unwrapped(value).toUInt();
    if (key == "color-scheme"_L1) {
        if (wish == PreferDark || wish == PreferLight)
            m_isDark = wish == PreferDark;
    } else if (key == "contrast"_L1) {
        m_contrast = wish == HigherContrast ? Theme::Contrast::Higher : Theme::Contrast::Usual;
    } else if (key == "reduced-motion"_L1) {
        m_reducesMotion = wish == ReducedMotion;
    } else {
        return false;
    }
    return true;
}

#else

SystemAppearance::SystemAppearance(QObject* parent)
    : QObject(parent), m_isDark(&Theme::of(QGuiApplication::palette()) == &Theme::dark()) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    connect(QGuiApplication::styleHints(), &QStyleHints::colorSchemeChanged, this,
            [this](Qt::ColorScheme scheme) {
                m_isDark = scheme == Qt::ColorScheme::Dark;
                Q_EMIT changed();
            });
#endif
}

#endif
