// SPDX-License-Identifier: MIT
#include "AppScene.h"

#include "Input.h"
#include "Samples.h"
#include "SheetDriver.h"

#include <QTest>

using namespace Qt::StringLiterals;

using enum SidebarCategory;

namespace {

void choose(AppWindow& app, SidebarCategory category) {
    app.window.content()->setSelectedCategory(category);
    QCoreApplication::processEvents();
}

void openDetail(AppWindow& app, const QString& id) {
    app.window.content()->selection().setSelectedPackageID(id);
    (void)SheetDriver(app.window);
}

void empty(AppWindow& app, SidebarCategory category, bool isLoading) {
    choose(app, category);
    app.manager.formulae.set({});
    app.manager.casks.set({});
    app.manager.outdatedFormulae.set({});
    app.manager.outdatedCasks.set({});
    app.manager.taps.set({});
    app.manager.searchResults.set({});
    for (Published<bool>* const flag :
         {&app.manager.isLoadingFormulae, &app.manager.isLoadingCasks,
          &app.manager.isLoadingOutdated, &app.manager.isLoadingTaps, &app.manager.isSearching})
        flag->set(isLoading);
    QCoreApplication::processEvents();
}

void runSettings(AppWindow& app) {
    choose(app, settings);
    app.brew.answer(u"cleanup -n"_s, "Would remove: something (1 file, 2.3MB)\n");
    app.brew.answer(u"doctor"_s, "Your system is ready.\n");
    app.page().press(u"previewButton"_s);
    app.page().press(u"doctorButton"_s);
    if (!QTest::qWaitFor([&app] {
            return app.page().button(u"doctorButton"_s).isEnabled() &&
                   app.page().button(u"previewButton"_s).isEnabled();
        }))
        qFatal("The settings page doesn't come to rest");
}

/// How an operation has ended that the pages know nothing of.
void tell(AppWindow& app, bool succeeded, const QString& closing) {
    const QString start = u"Upgrading visual-studio-code..."_s;
    Q_EMIT app.manager.operationEnded(
        {.succeeded = succeeded,
         .start = start,
         .closing = closing,
         .transcript = start +
                       u"\n==> Fetching visual-studio-code\n"
                       "Error: visual-studio-code: the archive is another one\n\n"_s +
                       closing});
    QCoreApplication::processEvents();
}

void tellFailure(AppWindow& app) {
    tell(app, false, u"Failed to upgrade visual-studio-code"_s);
}

void openAddTap(AppWindow& app) {
    choose(app, taps);
    app.page().press(u"addTapButton"_s);
    (void)SheetDriver(app.window);
}

} // namespace

void AppScene::fill(AppWindow& app) {
    BrewPackage wget = Samples::outdated(Samples::formula(u"wget"_s, u"Fetches files"_s));
    wget.installedOnRequest = false;
    wget.dependencies = {u"gettext"_s, u"libidn2"_s, u"openssl@3"_s};
    app.manager.formulae.set({Samples::formula(u"jq"_s, u"JSON processor"_s), wget});
    app.manager.casks.set({Samples::cask(u"iina"_s, u"Media player"_s)});
    app.manager.outdatedFormulae.set({Samples::outdatedFormula(u"wget"_s)});
    app.manager.outdatedCasks.set({Samples::outdatedCask(u"iina"_s)});
    app.manager.taps.set({{u"homebrew/core"_s}, {u"user/tools"_s}});
    app.manager.searchResults.set({{u"curl"_s, PackageType::formula, false},
                                   {u"jq"_s, PackageType::formula, true},
                                   {u"iina"_s, PackageType::cask, false}});
    QCoreApplication::processEvents();
}

const QList<AppScene>& AppScene::all() {
    static const QList<AppScene> scenes{
        {"formulae", [](AppWindow& app) { choose(app, formulae); }},
        {"casks", [](AppWindow& app) { choose(app, casks); }},
        {"updates", [](AppWindow& app) { choose(app, updates); }},
        {"search", [](AppWindow& app) { choose(app, search); }},
        {"taps", [](AppWindow& app) { choose(app, taps); }},
        {"settings", [](AppWindow& app) { choose(app, settings); }},
        {"settings with outputs", [](AppWindow& app) { runSettings(app); }},
        {"about", [](AppWindow& app) { choose(app, about); }},
        {"no category",
         [](AppWindow& app) {
             app.window.content()->setSelectedCategory(std::nullopt);
             QCoreApplication::processEvents();
         }},
        {"empty formulae", [](AppWindow& app) { empty(app, formulae, false); }},
        {"empty casks", [](AppWindow& app) { empty(app, casks, false); }},
        {"empty updates", [](AppWindow& app) { empty(app, updates, false); }},
        {"empty search", [](AppWindow& app) { empty(app, search, false); }},
        {"empty taps", [](AppWindow& app) { empty(app, taps, false); }},
        {"loading formulae", [](AppWindow& app) { empty(app, formulae, true); }},
        {"loading casks", [](AppWindow& app) { empty(app, casks, true); }},
        {"loading updates", [](AppWindow& app) { empty(app, updates, true); }},
        {"loading search", [](AppWindow& app) { empty(app, search, true); }},
        {"loading taps", [](AppWindow& app) { empty(app, taps, true); }},
        {"detail of a formula", [](AppWindow& app) { openDetail(app, u"formula-wget"_s); }},
        {"detail of a cask", [](AppWindow& app) { openDetail(app, u"cask-iina"_s); }},
        {"detail of nothing", [](AppWindow& app) { openDetail(app, u"formula-nothing"_s); }},
        {"add tap", openAddTap},
        {"add tap that failed",
         [](AppWindow& app) {
             openAddTap(app);
             tellFailure(app);
         }},
        {"overlay",
         [](AppWindow& app) {
             app.manager.operationOutput.set(u"Upgrading wget...\n"_s);
             app.manager.isRunningOperation.set(true);
             QCoreApplication::processEvents();
         }},
        {"failure",
         [](AppWindow& app) {
             app.manager.errorMessage.set(u"brew info --installed --formula failed"_s);
             QCoreApplication::processEvents();
         }},
        {"failed operation", tellFailure},
        {"both failures",
         [](AppWindow& app) {
             app.manager.errorMessage.set(u"brew info --installed --formula failed"_s);
             tellFailure(app);
         }},
        {"successful operation",
         [](AppWindow& app) { tell(app, true, u"Successfully upgraded visual-studio-code"_s); }},
        {"output",
         [](AppWindow& app) {
             tellFailure(app);
             app.window.content()->showOutput();
             (void)SheetDriver(app.window);
         }},
    };
    return scenes;
}
