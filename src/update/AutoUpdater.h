// SPDX-License-Identifier: MIT
#pragma once

#include "ApplicationBundle.h"
#include "UpdateFailure.h"
#include "UpdateLock.h"

#include <QCoroTask>
#include <QObject>
#include <QStringList>

#include <memory>
#include <optional>

class UpdateAlerts;
struct LatestRelease;

/// Where releases are published: a service that answers as GitHub's does, and the account
/// there that owns the releases' repository.
struct ReleaseSource final {
    /// The service's address without a slash at its end.
    QString api;
    QString owner;
    /// The program that asks it, and fetches from it: lumora-fetch.
    QString program{};
};

/// Keeps the application up to date: asks for the latest release, tells the user, and
/// installs it if the user wishes.
///
/// Interface thread only. Checks don't know of each other and keep nothing between them.
class AutoUpdater final : public QObject {
    Q_OBJECT

public:
    using UpdateError = ::UpdateError;

    /// The alerts outlive the updater. Without a bundle there is nothing to replace: what is
    /// installed otherwise is for others to update, and a check only tells of a newer release.
    /// A new bundle is started with `arguments`.
    AutoUpdater(ReleaseSource source, std::optional<ApplicationBundle> bundle, UpdateAlerts& alerts,
                QStringList arguments = {});

    /// Tells of an update that has just been installed, and looks for the next one; returns
    /// at once. Without a bundle it does neither.
    void checkAfterLaunch();
    /// A check that always answers, but for a release that offers nothing to download.
    void checkForUpdatesManually();

    /// Whether a request is under way, or its answer being read.
    [[nodiscard]] bool isUsingNetwork() const;

Q_SIGNALS:
    /// The new bundle waits for the application to end.
    void terminationRequested();

private:
    /// Silent checks tell of nothing but a newer release.
    enum class Manner { Silent, Answering };

    QCoro::Task<> tellOfUpdate(QString version);
    QCoro::Task<> checkLater();
    QCoro::Task<> checkForUpdates(Manner manner);
    void reportRelease(const LatestRelease& release, Manner manner);
    QCoro::Task<> showUpdateAlert(QString version, QString downloadURL, QString digest);
    void showInformation(const QString& title, const QString& text);
    void showErrorAlert(const QString& message);

    /// Throws UpdateFailure. Does nothing while an earlier one is at work.
    QCoro::Task<> downloadAndInstall(QString version, QString downloadURL, QString digest);

    /// The version being installed, kept in the preferences from the old application to the
    /// new one. On disk when it returns: the process may be about to end.
    static void storeUpdatedVersion(const QString& version);
    /// Notes that the script is about to be started: nobody will hear from it if it fails.
    static void storeSwap();
    /// Gives what is stored, once, unless the bundles should have been swapped and weren't.
    [[nodiscard]] std::optional<QString> takeUpdatedVersion() const;

    [[nodiscard]] QString currentVersion() const;

    ReleaseSource m_source;
    std::optional<ApplicationBundle> m_bundle;
    UpdateAlerts& m_alerts;
    QStringList m_arguments;
    /// Every request under way has it, too: by that isUsingNetwork() knows.
    std::shared_ptr<const QString> m_program;
    /// Held during an installation, and from its success to the end of the process.
    std::optional<UpdateLock> m_lock;
};
