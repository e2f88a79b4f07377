// SPDX-License-Identifier: MIT
#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QStringList>
#include <QUrl>

/// Takes the addresses that would be opened in the desktop's browser or mail client.
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

    void open(const QUrl& address) { m_opened.append(address.toString()); }

private:
    const QStringList m_schemes{QStringLiteral("http"), QStringLiteral("https"),
                                QStringLiteral("mailto"), QStringLiteral("ftp")};
    QStringList m_opened;
};
