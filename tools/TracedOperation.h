// SPDX-License-Identifier: MIT
#pragma once

#include <QCoroTask>
#include <QStringList>

#include <functional>
#include <vector>

class BrewManager;

/// One operation of BrewManager under the name by which a command line asks for it.
struct TracedOperation final {
    QString name;
    /// What follows the name, for the help text.
    QString synopsis;
    qsizetype fewestArguments;
    qsizetype mostArguments;
    /// Starts the operation; the task's value is its result as text.
    std::function<QCoro::Task<QString>(BrewManager&, const QStringList&)> start;

    [[nodiscard]] static const std::vector<TracedOperation>& all();

    /// Why these arguments can't be handed to the operation, or "" if they can.
    [[nodiscard]] QString complaintAbout(const QStringList& arguments) const;
};
