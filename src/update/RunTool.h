// SPDX-License-Identifier: MIT
#pragma once

#include <QCoroTask>
#include <QFuture>
#include <QStringList>

class QProcess;
class UpdateFailure;

/// Starts a process and waits for its end; false if it can't be started. The process has to be
/// there until then.
[[nodiscard]] QFuture<bool> runToTheEnd(QProcess& process);

/// Why a process can't be started, once that has failed.
[[nodiscard]] UpdateFailure notStarted(const QProcess& process);

/// Runs one of the system's tools and gives its exit status once it has exited; -1 if a signal
/// ended it. Throws UpdateFailure if it can't be started.
///
/// A tool that isn't at its usual path is looked for where the user's commands are.
[[nodiscard]] QCoro::Task<int> runTool(QString path, QStringList arguments);

/// Starts a tool that nobody waits for and that outlives the application.
void startTool(const QString& path, const QStringList& arguments);
