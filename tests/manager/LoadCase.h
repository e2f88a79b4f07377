// SPDX-License-Identifier: MIT
#pragma once

#include "BrewManager.h"
#include "FakeBrew.h"

#include <QStringList>

#include <functional>

/// One of the four loads: what makes it different from the others.
struct LoadCase final {
    QString name;
    QCoro::Task<> (BrewManager::*load)();
    QString flagName;
    Published<bool> BrewManager::*flag;
    QStringList arguments;
    QString failurePrefix;
    QString statusFailure;
    /// Something to load, and how its publication is recorded.
    QByteArray report;
    QStringList publication;

    [[nodiscard]] static const QList<LoadCase>& all();
    [[nodiscard]] static const LoadCase& named(const QString& name);

    /// A test's data table: the column "load" and a row for each case.
    static void addRows();

    /// Script lines that answer every load's command line with its report. `before` gives the
    /// lines to run before each answer.
    [[nodiscard]] static QByteArray
    answers(const FakeBrew& brew, const std::function<QByteArray(const LoadCase&)>& before = {});

    /// How the whole of a load is recorded that ends with these lines before its flag is lowered.
    [[nodiscard]] QStringList recordedWith(const QStringList& outcome) const;
};

/// A report of installed formulae that have nothing but these names.
[[nodiscard]] QByteArray formulaeReport(const QByteArrayList& names);
