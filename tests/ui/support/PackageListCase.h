// SPDX-License-Identifier: MIT
#pragma once

#include "PageWindow.h"

#include <QTest>

/// One of the two lists of installed packages: what makes it different from the other.
struct PackageListCase final {
    PackageType type{};
    QString title;
    QString symbol;
    QString loading;
    QString nothingInstalled;
    QString placeholder;
    QString refreshHelp;
    QString alertTitle;
    /// The run that loads it.
    QString load;
    QString uninstall;

    [[nodiscard]] static const PackageListCase& of(PackageType type);

    /// A test's data table: the column "type" and a row for each type.
    static void addRows();

    [[nodiscard]] BrewPackage package(const QString& name, const QString& desc = {}) const;

    [[nodiscard]] QString id(const QString& name) const { return packageID(type, name); }

    /// What brew answers when the list is loaded.
    void setInstalled(ScriptedBrew& brew, const QList<BrewPackage>& packages) const;
    /// Gives the manager the list without a run.
    void publish(BrewManager& manager, const QList<BrewPackage>& packages) const;
    /// Shows the page of the list.
    void show(PageWindow& window) const;
};
