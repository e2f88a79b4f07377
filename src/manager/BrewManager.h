// SPDX-License-Identifier: MIT
#pragma once

#include "BrewPackage.h"
#include "BrewTap.h"
#include "OperationReport.h"
#include "OutdatedPackage.h"
#include "Published.h"
#include "SearchResult.h"

#include <QCoroTask>
#include <QFuture>

#include <functional>
#include <optional>
#include <string>

struct BrewDiscovery;

/// Everything the interface shows about Homebrew, and every Homebrew action.
///
/// All of it belongs to the interface thread; only the runs of `brew` happen elsewhere.
/// Operations start at once, never throw and never wait for each other: of two that
/// overlap, the one that ends last has the last word. Discarding an operation's task
/// doesn't stop it. A manager that is destroyed first leaves them without effect.
class BrewManager final : public ObservableObject {
    Q_OBJECT

public:
    /// Looks for `brew` in Homebrew's usual places, blocking (see BrewDiscovery).
    BrewManager();
    explicit BrewManager(const BrewDiscovery& discovery);

    /// Installed packages, sorted by name.
    Published<QList<BrewPackage>> formulae{*this};
    Published<QList<BrewPackage>> casks{*this};
    /// Outdated packages in brew's order.
    Published<QList<OutdatedPackage>> outdatedFormulae{*this};
    Published<QList<OutdatedPackage>> outdatedCasks{*this};
    Published<QList<BrewTap>> taps{*this};
    /// Hits of the last search.
    Published<QList<SearchResult>> searchResults{*this};
    Published<bool> isLoadingFormulae{*this};
    Published<bool> isLoadingCasks{*this};
    Published<bool> isLoadingOutdated{*this};
    Published<bool> isLoadingTaps{*this};
    Published<bool> isSearching{*this};
    /// A package or tap operation is running.
    Published<bool> isRunningOperation{*this};
    /// The transcript of the running operation, or else of the last one. What brew prints joins
    /// it as a whole when brew has ended.
    Published<QString> operationOutput{*this};
    /// The last failed load or search in words for the user, until the next one starts.
    Published<std::optional<QString>> errorMessage{*this};
    Published<bool> brewAvailable{*this, true};

    /// "" when there is no brew.
    [[nodiscard]] const QString& brewPath() const { return m_brewPath; }

    /// From now on the commands of loads start only once `until` is finished. The loads don't wait:
    /// their flags say at once what is going on.
    void holdLoadCommands(QFuture<void> until) { m_loadCommandsHeldUntil = std::move(until); }

    // Loads replace their lists whole, or leave them and set errorMessage.
    QCoro::Task<> loadFormulae();
    QCoro::Task<> loadCasks();
    QCoro::Task<> loadOutdated();
    QCoro::Task<> loadTaps();
    /// All four loads at once; ends with the slowest.
    QCoro::Task<> refreshAll();
    /// Fills searchResults; a query of nothing but blanks empties them without a run.
    QCoro::Task<> search(QString query);

    // Operations write operationOutput and tell whether brew exited with status 0.
    // They reload nothing.
    QCoro::Task<bool> install(QString name, PackageType type);
    QCoro::Task<bool> uninstall(QString name, PackageType type);
    QCoro::Task<bool> upgrade(QString name, PackageType type);
    QCoro::Task<bool> upgradeAll();
    QCoro::Task<bool> addTap(QString name);
    QCoro::Task<bool> removeTap(QString name);

    // Reports return the text to show and change no property.
    QCoro::Task<QString> getPackageInfo(QString name, PackageType type);
    QCoro::Task<QString> cleanupDryRun();
    QCoro::Task<QString> cleanup();
    QCoro::Task<QString> doctor();

Q_SIGNALS:
    /// An operation has begun and shown `start`, the first line of its transcript.
    void operationStarted(const QString& start);
    /// An operation has ended and written all it has to write. Each one that has started says
    /// so, unless the manager is destroyed first.
    void operationEnded(const OperationReport& report);

private:
    struct Load;
    struct Operation;
    struct Printed;

    QCoro::Task<> runLoad(Load load);
    QCoro::Task<bool> runOperation(Operation operation);
    QCoro::Task<QString> runReport(QStringList arguments,
                                   std::function<QString(const Printed&)> choose);
    QString m_brewPath;
    /// A future of nothing is a finished one.
    QFuture<void> m_loadCommandsHeldUntil;
};
