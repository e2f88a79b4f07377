// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// A bundle whose executable is a shell script.
///
/// Without an argument it leaves its version in the file `started` beside the bundle and
/// ends; with one, it only prints its name and version.
class SampleBundle final {
public:
    SampleBundle(QString path, QString version) : SampleBundle(path, version, {}) {}

    /// Adds this many zeros, as a library in the bundle would.
    SampleBundle(QString path, QString version, qint64 ballast);

    [[nodiscard]] const QString& path() const { return m_path; }

    [[nodiscard]] QString executable() const;

    /// Every file with its own mode and content, and every folder.
    [[nodiscard]] static QByteArray snapshot(const QString& folder);

    /// The version that the executable names when it is run; nothing if it can't be run.
    [[nodiscard]] static QString startedVersion(const QString& bundle);

    /// What started bundles have left beside this one, so far.
    [[nodiscard]] QString lastStarted() const;

private:
    void write(const QString& relativePath, const QByteArray& content) const;

    QString m_path;
};
