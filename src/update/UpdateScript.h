// SPDX-License-Identifier: MIT
#pragma once

#include <QCoroTask>
#include <QString>
#include <QStringList>

/// The shell script that swaps the bundles once the application is gone, and starts the
/// new one.
struct UpdateScript final {
    /// The bundle to replace.
    QString appPath;
    /// The bundle to replace it with.
    QString newPath;
    QString archivePath;
    QString unpackFolder;
    QString scriptPath;
    /// What the new bundle is started with, whatever is in them.
    QStringList arguments{};

    /// The lines, without a line feed after the last. Paths stand in double quotes as they
    /// are: see canName().
    [[nodiscard]] QString text() const;

    /// Throws UpdateFailure if this system lacks a tool that the script needs: without them it
    /// wouldn't wait for the application, or not start it.
    static void checkTools();

    /// Whether some process is running the script at this path. Throws UpdateFailure if that
    /// can't be found out.
    [[nodiscard]] static QCoro::Task<bool> isAtWork(QString scriptPath);

    /// Whether this path means itself between quotes of either kind.
    [[nodiscard]] static bool canName(const QString& path);
};
