// SPDX-License-Identifier: MIT
#include "RunTool.h"

#include "UpdateFailure.h"

#include <QCoroFuture>
#include <QFileInfo>
#include <QProcess>
#include <QPromise>
#include <QStandardPaths>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

void prepare(QProcess& process, const QString& path, const QStringList& arguments) {
    const QFileInfo usual(path);
    const QString found =
        usual.isExecutable() ? path : QStandardPaths::findExecutable(usual.fileName());
    process.setProgram(found.isEmpty() ? path : found);
    process.setArguments(arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
}

} // namespace

QFuture<bool> runToTheEnd(QProcess& process) {
    const auto wasStarted = std::make_shared<QPromise<bool>>();
    wasStarted->start();
    const auto end = [wasStarted](bool value) {
        wasStarted->addResult(value);
        wasStarted->finish();
    };
    QObject::connect(&process, &QProcess::finished, &process, [end] { end(true); });
    QObject::connect(&process, &QProcess::errorOccurred, &process,
                     [end](QProcess::ProcessError error) {
                         if (error == QProcess::FailedToStart)
                             end(false);
                     });
    process.start();
    return wasStarted->future();
}

UpdateFailure notStarted(const QProcess& process) {
    return UpdateFailure(process.program() + u": "_s + process.errorString());
}

QCoro::Task<int> runTool(QString path, QStringList arguments) {
    QProcess process;
    prepare(process, path, arguments);
    if (!co_await runToTheEnd(process))
        throw notStarted(process);
    co_return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

void startTool(const QString& path, const QStringList& arguments) {
    QProcess process;
    prepare(process, path, arguments);
    if (!process.startDetached())
        throw notStarted(process);
}
