// SPDX-License-Identifier: MIT
#include "Blanks.h"
#include "BrewListResponse.h"
#include "BrewManager.h"
#include "CoroutineParameters.h"
#include "DetachedRun.h"
#include "JsonReport.h"
#include "OutdatedResponse.h"
#include "PrintedLists.h"
#include "SortByName.h"

#include <QCoroFuture>
#include <QPointer>

#include <new>

using namespace Qt::StringLiterals;

/// One row of the table of loads.
struct BrewManager::Load final {
    Published<bool>& isLoading;
    QStringList arguments;
    QString failurePrefix;
    /// errorMessage for a non-zero status; without one the status doesn't matter.
    std::optional<QString> statusFailure;
    /// Turns standard output into published lists, or says why it can't and leaves them.
    std::function<std::optional<QString>(const std::string& output)> publish;

    /// The same; memory that isn't enough is such a reason, too.
    [[nodiscard]] std::optional<QString> publishIfItFits(const std::string& output) const {
        try {
            return publish(output);
        } catch (const std::bad_alloc&) {
            return QString::fromStdString(LaunchError::outOfMemory().description);
        }
    }
};

QCoro::Task<> BrewManager::runLoad(Load load) {
    static_assert(takesParametersByValue<&BrewManager::runLoad>);
    const QPointer<BrewManager> self(this);
    load.isLoading.set(true);
    errorMessage.set(std::nullopt);
    co_await m_loadCommandsHeldUntil;
    if (!self)
        co_return;
    const auto outcome = co_await runDetached(m_brewPath, load.arguments, std::identity());
    if (!self)
        co_return;

    if (const auto* error = std::get_if<LaunchError>(outcome.get())) {
        errorMessage.set(load.failurePrefix + QString::fromStdString(error->description));
    } else {
        const auto& result = std::get<CommandResult>(*outcome);
        if (result.status != 0 && load.statusFailure)
            errorMessage.set(load.statusFailure);
        else if (const auto failure = load.publishIfItFits(result.standardOutput))
            errorMessage.set(load.failurePrefix + *failure);
    }
    load.isLoading.set(false);
}

namespace {

template <class Record>
std::optional<QString>
publishPackages(const std::string& output, QList<Record> BrewListResponse::*records,
                BrewPackage (*toPackage)(Record), Published<QList<BrewPackage>>& list) {
    auto decoded = decodeReport<BrewListResponse>(output);
    if (const auto* error = std::get_if<DecodingError>(&decoded))
        return error->description;

    auto& report = std::get<BrewListResponse>(decoded);
    QList<BrewPackage> packages;
    packages.reserve((report.*records).size());
    for (Record& record : report.*records)
        packages.append(toPackage(std::move(record)));
    sortByName(packages);
    list.set(std::move(packages));
    return std::nullopt;
}

QSet<QString> namesOf(const QList<BrewPackage>& packages) {
    QSet<QString> names;
    names.reserve(packages.size());
    for (const BrewPackage& package : packages)
        names.insert(package.name);
    return names;
}

} // namespace

QCoro::Task<> BrewManager::loadFormulae() {
    return runLoad({
        .isLoading = isLoadingFormulae,
        .arguments = {u"info"_s, u"--json=v2"_s, u"--installed"_s, u"--formula"_s},
        .failurePrefix = u"Failed to load formulae: "_s,
        .statusFailure = u"brew info --installed --formula failed"_s,
        .publish =
            [this](const std::string& output) {
                return publishPackages(output, &BrewListResponse::formulae,
                                       &BrewPackage::fromFormula, formulae);
            },
    });
}

QCoro::Task<> BrewManager::loadCasks() {
    return runLoad({
        .isLoading = isLoadingCasks,
        .arguments = {u"info"_s, u"--json=v2"_s, u"--installed"_s, u"--cask"_s},
        .failurePrefix = u"Failed to load casks: "_s,
        .statusFailure = u"brew info --installed --cask failed"_s,
        .publish =
            [this](const std::string& output) {
                return publishPackages(output, &BrewListResponse::casks, &BrewPackage::fromCask,
                                       casks);
            },
    });
}

QCoro::Task<> BrewManager::loadOutdated() {
    return runLoad({
        .isLoading = isLoadingOutdated,
        .arguments = {u"outdated"_s, u"--json=v2"_s},
        .failurePrefix = u"Failed to load outdated: "_s,
        .statusFailure = u"brew outdated failed"_s,
        .publish = [this](const std::string& output) -> std::optional<QString> {
            const auto decoded = decodeReport<OutdatedResponse>(output);
            if (const auto* error = std::get_if<DecodingError>(&decoded))
                return error->description;
            const auto& report = std::get<OutdatedResponse>(decoded);

            QList<OutdatedPackage> newFormulae;
            for (const OutdatedFormulaJSON& formula : report.formulae) {
                newFormulae.append({formula.name, formula.installedVersions.value(0, u"?"_s),
                                    formula.currentVersion, PackageType::formula});
            }
            QList<OutdatedPackage> newCasks;
            for (const OutdatedCaskJSON& cask : report.casks) {
                newCasks.append(
                    {cask.name, cask.installedVersions, cask.currentVersion, PackageType::cask});
            }
            outdatedFormulae.set(std::move(newFormulae));
            outdatedCasks.set(std::move(newCasks));
            return std::nullopt;
        },
    });
}

QCoro::Task<> BrewManager::loadTaps() {
    return runLoad({
        .isLoading = isLoadingTaps,
        .arguments = {u"tap"_s},
        .failurePrefix = u"Failed to load taps: "_s,
        .statusFailure = u"brew tap failed"_s,
        .publish = [this](const std::string& output) -> std::optional<QString> {
            taps.set(printedTaps(QString::fromStdString(output)));
            return std::nullopt;
        },
    });
}

QCoro::Task<> BrewManager::refreshAll() {
    auto formulaeLoad = loadFormulae();
    auto casksLoad = loadCasks();
    auto outdatedLoad = loadOutdated();
    auto tapsLoad = loadTaps();
    co_await formulaeLoad;
    co_await casksLoad;
    co_await outdatedLoad;
    co_await tapsLoad;
}

QCoro::Task<> BrewManager::search(QString query) {
    if (trimmedOfBlanks(query).isEmpty()) {
        searchResults.set({});
        return []() -> QCoro::Task<> { co_return; }();
    }
    return runLoad({
        .isLoading = isSearching,
        .arguments = {u"search"_s, query},
        .failurePrefix = u"Search failed: "_s,
        // A search without a hit ends with status 1.
        .statusFailure = std::nullopt,
        .publish = [this, installedFormulae = namesOf(*formulae), installedCasks = namesOf(*casks)](
                       const std::string& output) -> std::optional<QString> {
            searchResults.set(
                printedHits(QString::fromStdString(output), installedFormulae, installedCasks));
            return std::nullopt;
        },
    });
}
