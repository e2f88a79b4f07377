// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QVariant>

class QDBusVariant;

/// The desktop's wish for light or dark surroundings.
///
/// It is read from the desktop portal, and followed while the application runs. Without a
/// portal, as on macOS, the palette that the toolkit starts with decides for good.
class SystemAppearance final : public QObject {
    Q_OBJECT

public:
    /// Waits for the portal's first answer, but not for long.
    explicit SystemAppearance(QObject* parent = nullptr);

    [[nodiscard]] bool isDark() const { return m_isDark; }

Q_SIGNALS:
    void changed();

private:
    /// A slot by name, which is what a D-Bus signal connects to.
    Q_SLOT void onSettingChanged(const QString& group, const QString& key,
                                 const QDBusVariant& value);
    void setColorScheme(const QVariant& value);

    bool m_isDark{false};
};
