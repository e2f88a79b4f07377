// SPDX-License-Identifier: MIT
#pragma once

#include "AutoUpdater.h"
#include "ChangedVariable.h"
#include "OwnPgrep.h"
#include "RecordedAlerts.h"
#include "ReleaseServer.h"
#include "SampleBundle.h"

#include <QDir>
#include <QSignalSpy>

/// A bundle 0.1.9 that is running, a bundle 0.2.0 to be released, a user who answers the
/// updater, and a temporary directory of this scene's own. The preferences are empty.
class UpdateScene final {
public:
    /// How long a test may wait for a whole update, in milliseconds.
    static constexpr int patience = 120'000;

    /// The server is reset.
    explicit UpdateScene(ReleaseServer& server,
                         RecordedAlerts::Answer answer = RecordedAlerts::Answer::UpdateNow);

    /// Packs the new bundle in one of the ways of make_archive.py and has it offered.
    void offerArchive(const QString& kind = QStringLiteral("honest"),
                      const QString& version = QStringLiteral("0.2.0"));
    void offerArchiveOf(const SampleBundle& bundle, const QString& kind, const QString& version);

    /// Where the served archive is.
    [[nodiscard]] QString servedArchive() const { return path(QStringLiteral("served.tar.gz")); }

    /// What a release says about it.
    [[nodiscard]] QString digest() const;

    /// A path in the scene's own folder.
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }

    /// The system's temporary directory.
    [[nodiscard]] QString temporaryFolder() const { return path(QStringLiteral("tmp")); }

    /// The updater's folder in there, and files in it.
    [[nodiscard]] QString updateFolder() const;
    [[nodiscard]] QString updateFile(const QString& name) const;

    /// A folder that no update may touch, with a file `precious` in it.
    [[nodiscard]] QString outside() const { return path(QStringLiteral("outside")); }

    [[nodiscard]] AutoUpdater& updater() { return m_updater; }

    [[nodiscard]] ReleaseServer& server() { return m_server; }

    [[nodiscard]] const RecordedAlerts& alerts() const { return m_alerts; }

    [[nodiscard]] const SampleBundle& bundle() const { return m_bundle; }

    /// The version that the preferences hold for the next launch.
    [[nodiscard]] static QString storedVersion();

    /// Whether the application has been asked to end.
    [[nodiscard]] bool isAskedToEnd() const { return !m_terminations.isEmpty(); }

    /// The bundle is the one that was running from the beginning, and starts.
    [[nodiscard]] bool isBundleUntouched() const;
    [[nodiscard]] bool isOutsideUntouched() const;

    /// The script is done: a new bundle has been started, and nothing is left behind.
    [[nodiscard]] bool isSwapDone() const;
    /// Alerts and files as they are, for a message.
    [[nodiscard]] QByteArray description() const;

private:
    OwnPgrep m_pgrep;
    /// With a name that has to be quoted and encoded on its way into the script.
    QTemporaryDir m_folder{QDir::tempPath() + QStringLiteral("/it updates 갱신 XXXXXX")};
    ChangedVariable m_temporaryFolder{"TMPDIR", temporaryFolder().toUtf8()};
    ReleaseServer& m_server;
    RecordedAlerts m_alerts;
    SampleBundle m_bundle;
    AutoUpdater m_updater;
    QSignalSpy m_terminations;
    QByteArray m_bundleBefore;
    QByteArray m_outsideBefore;
};
