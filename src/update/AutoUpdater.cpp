// SPDX-License-Identifier: MIT
#include "AutoUpdater.h"

#include "Background.h"
#include "CompareVersions.h"
#include "FetchRequest.h"
#include "L10n.h"
#include "LatestRelease.h"
#include "Preferences.h"
#include "UpdateAlerts.h"

#include <QCoreApplication>
#include <QCoroFuture>
#include <QCoroTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QSettings>
#include <QUrl>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString repoName = u"Lumora-releases"_s;
const QString updatedVersionKey = u"Lumora.updatedToVersion"_s;
const QString swapKey = u"Lumora.updateSwap"_s;

/// The catalogue has it before the sentence that an update restarts the application.
QString currentVersionLine(const QString& current) {
    return L10n::updateInfoText(current).section(u'\n', 0, 0);
}

UpdateAlerts::Alert updateOffer(const QString& version, const QString& current) {
    return {
        .style = UpdateAlerts::Style::Informational,
        .title = L10n::newVersionAvailable(version),
        .text = L10n::updateInfoText(current),
        .buttons = {L10n::updateNow(), L10n::later()},
    };
}

} // namespace

AutoUpdater::AutoUpdater(ReleaseSource source, std::optional<ApplicationBundle> bundle,
                         UpdateAlerts& alerts, QStringList arguments)
    : m_source(std::move(source)),
      m_bundle(std::move(bundle)),
      m_alerts(alerts),
      m_arguments(std::move(arguments)),
      m_program(std::make_shared<const QString>(m_source.program)) {}

void AutoUpdater::checkAfterLaunch() {
    if (!m_bundle)
        return;
    if (const auto version = takeUpdatedVersion())
        tellOfUpdate(*version);
    checkLater();
}

QCoro::Task<> AutoUpdater::tellOfUpdate(QString version) {
    const QPointer<AutoUpdater> self(this);
    co_await QCoro::sleepFor(1s);
    if (self)
        showInformation(L10n::updateComplete(), L10n::updatedTo(version));
}

QCoro::Task<> AutoUpdater::checkLater() {
    const QPointer<AutoUpdater> self(this);
    co_await QCoro::sleepFor(3s);
    if (self)
        co_await checkForUpdates(Manner::Silent);
}

void AutoUpdater::checkForUpdatesManually() {
    checkForUpdates(Manner::Answering);
}

QCoro::Task<> AutoUpdater::checkForUpdates(Manner manner) {
    const QPointer<AutoUpdater> self(this);
    const QUrl address(m_source.api + u"/repos/"_s + m_source.owner + u'/' + repoName +
                           u"/releases/latest"_s,
                       QUrl::StrictMode);
    if (!address.isValid())
        co_return;
    // The check isn't over before its answer has been read.
    const std::shared_ptr<const QString> program = m_program;
    // Real answers are a hundredth of it, and one without an end would take all memory there is.
    constexpr qsizetype longest = qsizetype{1024} * 1024;
    FetchRequest request{.program = *program, .address = address, .patience = 15s};
    request.headers.append(u"Accept: application/vnd.github+json"_s);
    bool isAnswered = true;
    std::optional<QByteArray> answer;
    try {
        answer = co_await fetch(std::move(request), longest);
    } catch (const UpdateFailure&) {
        isAnswered = false;
    }
    if (!self)
        co_return;
    const auto fail = [this, manner](const QString& message) {
        if (manner == Manner::Answering)
            showErrorAlert(message);
    };
    if (!isAnswered)
        co_return fail(L10n::updateCheckError());
    if (!answer)
        co_return fail(L10n::cannotConnect());
    // A mebibyte of small pieces takes longer than a window may be still.
    const auto parse = [body = *answer] { return QJsonDocument::fromJson(body); };
    const QJsonDocument document = co_await inBackground(parse);
    if (!self)
        co_return;
    if (document.isNull())
        co_return fail(L10n::updateCheckError());
    if (const auto release = LatestRelease::from(document.object()))
        reportRelease(*release, manner);
}

void AutoUpdater::reportRelease(const LatestRelease& release, Manner manner) {
    const QString current = currentVersion();
    if (compareVersions(release.version, current) < 1) {
        if (manner == Manner::Answering)
            showInformation(L10n::upToDate(), L10n::runningLatest(current));
        return;
    }
    if (!m_bundle)
        showInformation(L10n::newVersionAvailable(release.version), currentVersionLine(current));
    else if (const auto& archive = release.archive)
        showUpdateAlert(release.version, archive->address, archive->digest);
}

QCoro::Task<> AutoUpdater::showUpdateAlert(QString version, QString downloadURL, QString digest) {
    const QPointer<AutoUpdater> self(this);
    constexpr qsizetype updateNow = 0;
    const qsizetype choice = co_await m_alerts.show(updateOffer(version, currentVersion()));
    if (!self || choice != updateNow)
        co_return;
    QString failure;
    try {
        co_await downloadAndInstall(version, downloadURL, digest);
    } catch (const UpdateFailure& reason) {
        failure = reason.description();
    }
    if (self && !failure.isEmpty())
        showErrorAlert(failure);
}

void AutoUpdater::showInformation(const QString& title, const QString& text) {
    m_alerts.show({
        .style = UpdateAlerts::Style::Informational,
        .title = title,
        .text = text,
        .buttons = {L10n::ok()},
    });
}

void AutoUpdater::showErrorAlert(const QString& message) {
    m_alerts.show({
        .style = UpdateAlerts::Style::Warning,
        .title = L10n::updateCheckFailed(),
        .text = message,
        .buttons = {L10n::ok()},
    });
}

void AutoUpdater::storeUpdatedVersion(const QString& version) {
    Preferences::store(updatedVersionKey, version);
}

void AutoUpdater::storeSwap() {
    Preferences::store(swapKey, true);
}

std::optional<QString> AutoUpdater::takeUpdatedVersion() const {
    const bool wasToBeSwapped = QSettings().contains(swapKey);
    if (wasToBeSwapped)
        Preferences::forget(swapKey);
    const QVariant value = QSettings().value(updatedVersionKey);
    if (value.typeId() != QMetaType::QString)
        return std::nullopt;
    Preferences::forget(updatedVersionKey);
    const QString version = value.toString();
    if (wasToBeSwapped && compareVersions(version, currentVersion()) != 0)
        return std::nullopt;
    return version;
}

QString AutoUpdater::currentVersion() const {
    return m_bundle ? m_bundle->version() : QCoreApplication::applicationVersion();
}

bool AutoUpdater::isUsingNetwork() const {
    return m_program.use_count() > 1;
}
