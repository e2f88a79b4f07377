// SPDX-License-Identifier: MIT
#pragma once

#include "AutoUpdater.h"

#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

/// A release service: a web server in a process of its own, on this machine. Paths that it
/// isn't told how to answer are not found.
class ReleaseServer final {
public:
    enum class Transport { Plain, Encrypted };

    explicit ReleaseServer(Transport transport = Transport::Plain);
    ~ReleaseServer();

    /// "http://127.0.0.1:…" or "https://127.0.0.1:…".
    [[nodiscard]] QString address() const { return m_address; }

    /// Where an account has its releases. Trusted by those who ask it in this way is also whom the
    /// certificate vouches for that LUMORA_TRUSTED_CERTIFICATE names.
    [[nodiscard]] ReleaseSource source(const QString& owner = QStringLiteral("someone")) const;

    /// The certificate of an encrypted server, which only it vouches for.
    [[nodiscard]] QString certificatePath() const {
        return m_folder.filePath(QStringLiteral("certificate"));
    }

    /// Forgets all answers and requests.
    void reset();

    /// Answers a path from now on; the members are described in release_server.py.
    void answer(const QString& path, const QJsonObject& answer);

    /// Sends those who ask for a path to another address.
    void redirect(const QString& path, const QString& target, int status = 302);

    /// The path of an account's latest release.
    [[nodiscard]] static QString latestPath(const QString& owner = QStringLiteral("someone"));

    /// Offers this version of an archive that the server has at this path.
    void offer(const QString& version, const QString& path = QStringLiteral("/archive.tar.gz"),
               const QString& owner = QStringLiteral("someone"));

    /// The same with a digest of the archive.
    void offerWithDigest(const QString& version, const QJsonValue& digest);

    /// The requests so far: their paths and header lines.
    [[nodiscard]] QList<QJsonObject> requests() const;
    [[nodiscard]] qsizetype requestsFor(const QString& path) const;

    /// The path of a gate that answers can wait for.
    [[nodiscard]] QString gate(const QString& name) const { return m_folder.filePath(name); }

    void open(const QString& gate) const;
    /// Whether an answer has come to the gate.
    [[nodiscard]] bool hasReached(const QString& gate) const;

    /// Whether somebody takes more of an answer without an end than there can be under way.
    /// Waits for it, and nothing happens in this thread meanwhile.
    [[nodiscard]] bool floods();

    /// From now on nobody listens at the address.
    void stop();

private:
    void offer(const QString& version, QJsonObject asset, const QString& owner);
    void writePlan() const;

    QTemporaryDir m_folder;
    QProcess m_process;
    QString m_address;
    QJsonObject m_plan;
};
