// SPDX-License-Identifier: MIT
#pragma once

#include "style/Theme.h"

#include <QObject>
#include <QVariant>

#ifdef LUMORA_DBUS
class QDBusVariant;
#endif

/// The desktop's wishes: light or dark surroundings, stronger contrasts, less motion.
///
/// They are read from the desktop portal, and followed while the application runs. Without a
/// portal the palette that the toolkit starts with decides for good; built without D-Bus, as on
/// macOS, light and dark are the toolkit's, which follows them from Qt 6.5 on.
class SystemAppearance final : public QObject {
    Q_OBJECT

public:
    /// Waits for the portal's first answer, but not for long.
    explicit SystemAppearance(QObject* parent = nullptr);

    [[nodiscard]] bool isDark() const { return m_isDark; }

    [[nodiscard]] Theme::Contrast contrast() const { return m_contrast; }

    [[nodiscard]] bool reducesMotion() const { return m_reducesMotion; }

Q_SIGNALS:
    void changed();

private:
#ifdef LUMORA_DBUS
    /// A slot by name, which is what a D-Bus signal connects to.
    Q_SLOT void onSettingChanged(const QString& group, const QString& key,
                                 const QDBusVariant& value);
    /// Returns whether there is such a wish.
    bool setWish(const QString& key, const QVariant& value);
#endif

    bool m_isDark{false};
    bool m_reducesMotion{false};
    Theme::Contrast m_contrast{Theme::Contrast::Usual};
};
