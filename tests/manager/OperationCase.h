// SPDX-License-Identifier: MIT
#pragma once

#include "BrewManager.h"

#include <QStringList>

#include <functional>

/// One of the operations on packages and taps: what makes it different from the others.
struct OperationCase final {
    QString name;
    std::function<QCoro::Task<bool>(BrewManager&, const QString& package)> start;
    /// What brew gets and what the transcript says; `@` stands for the package's name.
    QStringList arguments;
    QString startText;
    QString successText;
    QString failureText;

    [[nodiscard]] static const QList<OperationCase>& all();
    [[nodiscard]] static const OperationCase& named(const QString& name);

    /// A test's data table: the column "operation" and a row for each case.
    static void addRows();

    [[nodiscard]] QStringList argumentsFor(const QString& package) const;
};

/// The text with the package's name in place of each `@`.
[[nodiscard]] QString withName(const QString& text, const QString& package);
