// SPDX-License-Identifier: MIT
#include "BrewManager.h"
#include "CoroutineParameters.h"
#include "DetachedRun.h"

#include <QCoroFuture>
#include <QPointer>

#include <new>

using namespace Qt::StringLiterals;

/// One row of the table of operations; a tap operation has no closing texts.
struct BrewManager::Operation final {
    QStringList arguments;
    QString start;
    QString success;
    QString failure;
};

/// What a report's command printed.
struct BrewManager::Printed final {
    QString output;
    QString error;
};

QCoro::Task<bool> BrewManager::runOperation(Operation operation) {
    static_assert(takesParametersByValue<&BrewManager::runOperation>);
    const QPointer<BrewManager> self(this);
    // The transcript of this run alone: an operation that overlaps writes to the same output.
    OperationReport report{.start = operation.start.chopped(1), .transcript = operation.start};
    const auto append = [this, &report](const QString& text) {
        // Both are one text, perhaps of megabytes, unless another operation has written to it.
        const bool isOne = operationOutput->constData() == report.transcript.constData();
        operationOutput.set(*operationOutput + text);
        report.transcript = isOne ? *operationOutput : report.transcript + text;
    };
    isRunningOperation.set(true);
    operationOutput.set(operation.start);
    Q_EMIT operationStarted(report.start);
    const auto outcome = co_await runDetached(m_brewPath, operation.arguments);
    if (!self)
        co_return false;

    const auto fail = [&](const LaunchError& error) {
        append(u"\nError: "_s + QString::fromStdString(error.description));
        isRunningOperation.set(false);
    };
    if (const auto* error = std::get_if<LaunchError>(outcome.get())) {
        fail(*error);
    } else {
        const auto& result = std::get<CommandResult>(*outcome);
        try {
            append(QString::fromStdString(result.standardOutput));
            if (!result.standardError.empty())
                append(u'\n' + QString::fromStdString(result.standardError));
            isRunningOperation.set(false);
            report.succeeded = result.status == 0;
            const QString closing = report.succeeded ? operation.success : operation.failure;
            if (!closing.isEmpty()) {
                append(closing);
                report.closing = closing.sliced(1);
            }
        } catch (const std::bad_alloc&) {
            // As if the command hadn't been started: there has to be room for saying so.
            report = {.start = report.start, .transcript = operation.start};
            operationOutput.set(operation.start);
            fail(LaunchError::outOfMemory());
        }
    }
    Q_EMIT operationEnded(report);
    co_return report.succeeded;
}

QCoro::Task<QString> BrewManager::runReport(QStringList arguments,
                                            std::function<QString(const Printed&)> choose) {
    static_assert(takesParametersByValue<&BrewManager::runReport>);
    const auto outcome = co_await runDetached(m_brewPath, arguments);
    const auto failure = [](const LaunchError& error) {
        return u"Error: "_s + QString::fromStdString(error.description);
    };
    if (const auto* error = std::get_if<LaunchError>(outcome.get()))
        co_return failure(*error);
    const auto& result = std::get<CommandResult>(*outcome);
    try {
        co_return choose({QString::fromStdString(result.standardOutput),
                          QString::fromStdString(result.standardError)});
    } catch (const std::bad_alloc&) {
        co_return failure(LaunchError::outOfMemory());
    }
}

namespace {

QStringList commandFor(const QString& verb, PackageType type, const QString& name) {
    if (type == PackageType::cask)
        return {verb, u"--cask"_s, name};
    return {verb, name};
}

} // namespace

QCoro::Task<bool> BrewManager::install(QString name, PackageType type) {
    return runOperation({
        .arguments = commandFor(u"install"_s, type, name),
        .start = u"Installing "_s + name + u"...\n"_s,
        .success = u"\nSuccessfully installed "_s + name,
        .failure = u"\nFailed to install "_s + name,
    });
}

QCoro::Task<bool> BrewManager::uninstall(QString name, PackageType type) {
    return runOperation({
        .arguments = commandFor(u"uninstall"_s, type, name),
        .start = u"Uninstalling "_s + name + u"...\n"_s,
        .success = u"\nSuccessfully uninstalled "_s + name,
        .failure = u"\nFailed to uninstall "_s + name,
    });
}

QCoro::Task<bool> BrewManager::upgrade(QString name, PackageType type) {
    return runOperation({
        .arguments = commandFor(u"upgrade"_s, type, name),
        .start = u"Upgrading "_s + name + u"...\n"_s,
        .success = u"\nSuccessfully upgraded "_s + name,
        .failure = u"\nFailed to upgrade "_s + name,
    });
}

QCoro::Task<bool> BrewManager::upgradeAll() {
    return runOperation({
        .arguments = {u"upgrade"_s},
        .start = u"Upgrading all packages...\n"_s,
        .success = u"\nAll packages upgraded"_s,
        .failure = u"\nUpgrade failed"_s,
    });
}

QCoro::Task<bool> BrewManager::addTap(QString name) {
    return runOperation({
        .arguments = {u"tap"_s, name},
        .start = u"Adding tap "_s + name + u"...\n"_s,
        .success = {},
        .failure = {},
    });
}

QCoro::Task<bool> BrewManager::removeTap(QString name) {
    return runOperation({
        .arguments = {u"untap"_s, name},
        .start = u"Removing tap "_s + name + u"...\n"_s,
        .success = {},
        .failure = {},
    });
}

QCoro::Task<QString> BrewManager::getPackageInfo(QString name, PackageType /*type*/) {
    return runReport({u"info"_s, name}, [](const Printed& printed) { return printed.output; });
}

QCoro::Task<QString> BrewManager::cleanupDryRun() {
    return runReport({u"cleanup"_s, u"-n"_s}, [](const Printed& printed) {
        return printed.output.isEmpty() ? printed.error : printed.output;
    });
}

QCoro::Task<QString> BrewManager::cleanup() {
    return runReport({u"cleanup"_s}, [](const Printed& printed) {
        const QString& text = printed.output.isEmpty() ? printed.error : printed.output;
        return text.isEmpty() ? u"Nothing to clean up."_s : text;
    });
}

QCoro::Task<QString> BrewManager::doctor() {
    return runReport({u"doctor"_s}, [](const Printed& printed) {
        return printed.error.isEmpty() ? printed.output : printed.output + u'\n' + printed.error;
    });
}
