// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Every text of the interface, in the language in force at the moment of the call.
///
/// Interface thread only. A template's argument is inserted as it is. The three texts of an
/// entry differ where their languages do and in nothing else on purpose: brackets, case and
/// spaces are as translators left them.
class L10n final {
public:
    L10n() = delete;

    [[nodiscard]] static QString packages();
    [[nodiscard]] static QString actions();
    [[nodiscard]] static QString system();
    [[nodiscard]] static QString formulae();
    [[nodiscard]] static QString casks();
    [[nodiscard]] static QString updates();
    [[nodiscard]] static QString search();
    [[nodiscard]] static QString taps();
    [[nodiscard]] static QString settings();
    [[nodiscard]] static QString about();
    [[nodiscard]] static QString cancel();
    [[nodiscard]] static QString close();
    [[nodiscard]] static QString install();
    [[nodiscard]] static QString uninstall();
    [[nodiscard]] static QString update();
    [[nodiscard]] static QString updateAll();
    [[nodiscard]] static QString remove();
    [[nodiscard]] static QString add();
    [[nodiscard]] static QString installed();
    [[nodiscard]] static QString outdated();
    [[nodiscard]] static QString dependency();
    [[nodiscard]] static QString preview();
    [[nodiscard]] static QString output();
    [[nodiscard]] static QString running();
    [[nodiscard]] static QString language();
    [[nodiscard]] static QString loadingFormulae();
    [[nodiscard]] static QString noFormulaeInstalled();
    [[nodiscard]] static QString filterFormulae();
    [[nodiscard]] static QString refreshFormulaeList();
    [[nodiscard]] static QString uninstallPackage();
    [[nodiscard]] static QString confirmUninstall(const QString& name);
    [[nodiscard]] static QString loadingCasks();
    [[nodiscard]] static QString noCasksInstalled();
    [[nodiscard]] static QString filterCasks();
    [[nodiscard]] static QString refreshCaskList();
    [[nodiscard]] static QString uninstallCask();
    [[nodiscard]] static QString searching();
    [[nodiscard]] static QString typeToSearch();
    [[nodiscard]] static QString noResultsFound();
    [[nodiscard]] static QString searchHomebrew();
    [[nodiscard]] static QString checkingForUpdates();
    [[nodiscard]] static QString allUpToDate();
    [[nodiscard]] static QString updateAllPackages();
    [[nodiscard]] static QString checkForUpdates();
    [[nodiscard]] static QString loadingTaps();
    [[nodiscard]] static QString noTapsConfigured();
    [[nodiscard]] static QString refreshTaps();
    [[nodiscard]] static QString addTap();
    [[nodiscard]] static QString addTapHelp();
    [[nodiscard]] static QString removeTapHelp();
    [[nodiscard]] static QString enterTapName();
    [[nodiscard]] static QString addingTap();
    [[nodiscard]] static QString removeTap();
    [[nodiscard]] static QString confirmRemoveTap(const QString& tap);
    [[nodiscard]] static QString cleanupTitle();
    [[nodiscard]] static QString cleanup();
    [[nodiscard]] static QString cleanupDesc();
    [[nodiscard]] static QString runCleanup();
    [[nodiscard]] static QString doctor();
    [[nodiscard]] static QString doctorDesc();
    [[nodiscard]] static QString runDoctor();
    [[nodiscard]] static QString diagnosis();
    [[nodiscard]] static QString cleanupAndDoctor();
    [[nodiscard]] static QString confirmCleanup();
    [[nodiscard]] static QString nothingToCleanUp();
    [[nodiscard]] static QString formula();
    [[nodiscard]] static QString cask();
    [[nodiscard]] static QString updateAvailable();
    [[nodiscard]] static QString description();
    [[nodiscard]] static QString details();
    [[nodiscard]] static QString name();
    [[nodiscard]] static QString version();
    [[nodiscard]] static QString installedVersion();
    [[nodiscard]] static QString homepage();
    [[nodiscard]] static QString dependencies(int count);
    [[nodiscard]] static QString loadingInfo();
    [[nodiscard]] static QString packageNotFound();
    [[nodiscard]] static QString homePage();
    [[nodiscard]] static QString contact();
    [[nodiscard]] static QString openSourceInfo();
    [[nodiscard]] static QString restartToApply();
    [[nodiscard]] static QString checkForUpdatesMenu();
    [[nodiscard]] static QString selectCategory();
    [[nodiscard]] static QString brewNotFound();
    [[nodiscard]] static QString brewNotFoundDesc();
    [[nodiscard]] static QString installHomebrew();
    [[nodiscard]] static QString updateComplete();
    [[nodiscard]] static QString updatedTo(const QString& version);
    [[nodiscard]] static QString upToDate();
    [[nodiscard]] static QString runningLatest(const QString& version);
    [[nodiscard]] static QString updateCheckFailed();
    [[nodiscard]] static QString cannotConnect();
    [[nodiscard]] static QString updateCheckError();
    [[nodiscard]] static QString newVersionAvailable(const QString& version);
    [[nodiscard]] static QString updateInfoText(const QString& version);
    [[nodiscard]] static QString updateNow();
    [[nodiscard]] static QString later();
    [[nodiscard]] static QString ok();
    [[nodiscard]] static QString downloadFailed();
    [[nodiscard]] static QString appBundleNotFound();
    [[nodiscard]] static QString extractFailed();
};
