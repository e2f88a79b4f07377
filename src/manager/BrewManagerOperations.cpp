// SPDX-License-Identifier: MIT
#include "BrewManager.h"
#include "CoroutineParameters.h"
#include "DetachedRun.h"

#include <QCoroFuture>
#include <QPointer>

#include <algorithm>
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

namespace {

/// What one operation has written. Another that overlaps writes to the same output; until one does,
/// both are one text, perhaps of megabytes.
class Transcript final {
public:
    explicit Transcript(Published<QString>& output) : m_output(output) {}

    [[nodiscard]] const QString& text() const { return m_text; }

    void restart(const QString& start) {
        m_text = start;
        m_output.set(start);
    }

    /// `longer` begins with the text.
    void extendTo(const QString& longer) {
        m_output.update([&](QString& output) {
            if (isShared(output))
                output = longer;
            else
                output += QStringView(longer).sliced(m_text.size());
            m_text = longer;
        });
    }

    void append(const QString& text) {
        m_output.update([&](QString& output) {
            if (isShared(output)) {
                // It grows in place if nobody else has it.
                m_text.clear();
                output += text;
                m_text = output;
            } else {
                output += text;
                m_text += text;
            }
        });
    }

private:
    [[nodiscard]] bool isShared(const QString& output) const {
        return output.constData() == m_text.constData();
    }

    Published<QString>& m_output;
    QString m_text;
};

/// What an operation's command has printed.
struct Transcribed final {
    /// The transcript up to the end of standard output; has room for the rest.
    QString text{};
    /// Standard error on a line of its own, or nothing.
    QString error{};
    bool succeeded{};
};

std::variant<Transcribed, LaunchError> transcribed(const QString& start, qsizetype longestClosing,
                                                   RunOutcome outcome) {
    if (auto* error = std::get_if<LaunchError>(&outcome))
        return std::move(*error);
    const auto& result = std::get<CommandResult>(outcome);
    try {
        const QString output = QString::fromStdString(result.standardOutput);
        Transcribed all{.succeeded = result.status == 0};
        if (!result.standardError.empty())
            all.error = u'\n' + QString::fromStdString(result.standardError);
        all.text.reserve(start.size() + output.size() + all.error.size() + longestClosing);
        all.text += start;
        all.text += output;
        // Memory that has been written to once is quicker to write to.
        const qsizetype end = all.text.size();
        all.text += all.error;
        all.text.truncate(end);
        return all;
    } catch (const std::bad_alloc&) {
        return LaunchError::outOfMemory();
    }
}

} // namespace

QCoro::Task<bool> BrewManager::runOperation(Operation operation) {
    static_assert(takesParametersByValue<&BrewManager::runOperation>);
    const QPointer<BrewManager> self(this);
    OperationReport report{.start = operation.start.chopped(1)};
    Transcript transcript(operationOutput);
    isRunningOperation.set(true);
    transcript.restart(operation.start);
    Q_EMIT operationStarted(report.start);
    const qsizetype longestClosing = std::max(operation.success.size(), operation.failure.size());
    const auto transcribe = [start = operation.start, longestClosing](RunOutcome ended) {
        return transcribed(start, longestClosing, std::move(ended));
    };
    const auto outcome = co_await runDetached(m_brewPath, operation.arguments, transcribe);
    if (!self)
        co_return false;

    const auto fail = [&](const LaunchError& error) {
        transcript.append(u"\nError: "_s + QString::fromStdString(error.description));
        isRunningOperation.set(false);
    };
    if (const auto* error = std::get_if<LaunchError>(outcome.get())) {
        fail(*error);
    } else {
        auto& printed = std::get<Transcribed>(*outcome);
        try {
            transcript.extendTo(std::exchange(printed.text, {}));
            if (!printed.error.isEmpty())
                transcript.append(printed.error);
            isRunningOperation.set(false);
            const QString closing = printed.succeeded ? operation.success : operation.failure;
            if (!closing.isEmpty()) {
                transcript.append(closing);
                report.closing = closing.sliced(1);
            }
            report.succeeded = printed.succeeded;
        } catch (const std::bad_alloc&) {
            // As if the command hadn't been started: there has to be room for saying so.
            transcript.restart(operation.start);
            fail(LaunchError::outOfMemory());
        }
    }
    report.transcript = transcript.text();
    Q_EMIT operationEnded(report);
    co_return report.succeeded;
}

QCoro::Task<QString> BrewManager::runReport(QStringList arguments,
                                            std::function<QString(const Printed&)> choose) {
    static_assert(takesParametersByValue<&BrewManager::runReport>);
    const auto describe = [choose](const RunOutcome& outcome) {
        const auto failure = [](const LaunchError& error) {
            return u"Error: "_s + QString::fromStdString(error.description);
        };
        if (const auto* error = std::get_if<LaunchError>(&outcome))
            return failure(*error);
        const auto& result = std::get<CommandResult>(outcome);
        try {
            return choose({QString::fromStdString(result.standardOutput),
                           QString::fromStdString(result.standardError)});
        } catch (const std::bad_alloc&) {
            return failure(LaunchError::outOfMemory());
        }
    };
    const auto text = co_await runDetached(m_brewPath, arguments, describe);
    co_return *text;
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
