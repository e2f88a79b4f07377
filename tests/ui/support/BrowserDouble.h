// SPDX-License-Identifier: MIT
#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QStringList>
#include <QUrl>

/// Takes the addresses that would be handed on to the desktop: those of its browser and mail
/// client, and those that must not get there.
class BrowserDouble final : public QObject {
    Q_OBJECT

public:
    BrowserDouble() {
        for (const QString& scheme : m_schemes)
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }

    ~BrowserDouble() override {
        for (const QString& scheme : m_schemes)
            QDesktopServices::unsetUrlHandler(scheme);
    }

    Q_DISABLE_COPY_MOVE(BrowserDouble)

    [[nodiscard]] const QStringList& opened() const { return m_opened; }

public Q_SLOTS:

    void open(const QUrl& address) { m_opened.append(address.toString(QUrl::FullyEncoded)); }

private:
    /// The first is that of an address without any.
    const QStringList m_schemes =
        QStringLiteral(" http https mailto ftp file smb steam tel ssh javascript "
                       "data blob view-source appstream wss httpss https+x")
            .split(QChar::Space);
    QStringList m_opened;
};
