// SPDX-License-Identifier: MIT
#include "FetchRequest.h"

#include "RunTool.h"
#include "UpdateFailure.h"

#include <QCoroFuture>
#include <QProcess>

namespace {

void prepare(QProcess& process, const FetchRequest& request) {
    process.setProgram(request.program);
    process.setArguments(QStringList{QString::number(request.patience.count()),
                                     request.address.toString(QUrl::FullyEncoded)} +
                         request.headers);
}

/// Whether an answer is there; throws if there is none.
bool isFetched(QProcess& process) {
    if (process.exitStatus() == QProcess::NormalExit) {
        switch (static_cast<FetchStatus>(process.exitCode())) {
        case FetchStatus::Fetched:
            return true;
        case FetchStatus::AnsweredOtherwise:
            return false;
        case FetchStatus::NoAnswer:
            break;
        }
    }
    const QString reason = QString::fromUtf8(process.readAllStandardError()).trimmed();
    throw reason.isEmpty() ? UpdateFailure(UpdateError::downloadFailed) : UpdateFailure(reason);
}

} // namespace

QCoro::Task<std::optional<QByteArray>> fetch(FetchRequest request, qsizetype longest) {
    QProcess process;
    prepare(process, request);
    QByteArray answer;
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &process, [&] {
        answer += process.readAllStandardOutput();
        if (answer.size() > longest)
            process.kill();
    });
    if (!co_await runToTheEnd(process))
        throw notStarted(process);
    answer += process.readAllStandardOutput();
    if (answer.size() > longest)
        throw UpdateFailure(UpdateError::downloadFailed);
    co_return isFetched(process) ? std::optional(answer) : std::nullopt;
}

QCoro::Task<bool> fetchInto(QString path, FetchRequest request) {
    QProcess process;
    prepare(process, request);
    process.setStandardOutputFile(path);
    if (!co_await runToTheEnd(process))
        throw notStarted(process);
    co_return isFetched(process);
}
