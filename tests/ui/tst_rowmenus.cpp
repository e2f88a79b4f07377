// SPDX-License-Identifier: MIT
#include "BrowserDouble.h"
#include "PackageListCase.h"
#include "Samples.h"
#include "UiTest.h"
#include "pages/SearchView.h"
#include "pages/UpdatesView.h"

#include <QMenu>

using namespace Qt::StringLiterals;

namespace {

/// What the menu of a row offers.
QStringList offered(const PageWindow& window, const QString& id) {
    QMenu& menu = window.page().list().openMenu(id);
    QStringList texts;
    for (const QAction* const action : menu.actions())
        texts.append(action->text());
    menu.close();
    return texts;
}

void choose(const PageWindow& window, const QString& id, const QString& text) {
    QMenu& menu = window.page().list().openMenu(id);
    for (QAction* const action : menu.actions()) {
        if (action->text() == text)
            action->trigger();
    }
    menu.close();
}

BrewPackage withHomepage(BrewPackage package, const QString& homepage) {
    package.homepage = homepage;
    return package;
}

} // namespace

/// What a right click offers for the rows of each page.
class RowMenusTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void offersWhatCanBeDoneWithAnInstalledPackage_data();
    void offersWhatCanBeDoneWithAnInstalledPackage();
    void opensTheHomepage();
    void upgradesAPackage_data();
    void upgradesAPackage();
    void leavesTheListsAfterAFailedUpgrade();
    void offersWhatCanBeDoneWithAnUpdate();
    void offersWhatCanBeDoneWithAHit();
};

void RowMenusTest::offersWhatCanBeDoneWithAnInstalledPackage_data() {
    PackageListCase::addRows();
}

void RowMenusTest::offersWhatCanBeDoneWithAnInstalledPackage() {
    QFETCH(PackageType, type);
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    const QString homepage = u"https://example.org/"_s;
    list.publish(window.manager, {withHomepage(list.package(u"current"_s), homepage),
                                  withHomepage(Samples::outdated(list.package(u"old"_s)), homepage),
                                  withHomepage(list.package(u"homeless"_s), {}),
                                  withHomepage(list.package(u"odd"_s), u"file:///etc/passwd"_s)});
    list.show(window);
    QCOMPARE(offered(window, list.id(u"current"_s)),
             (QStringList{u"Details"_s, u"Homepage"_s, u"Uninstall"_s}));
    QCOMPARE(offered(window, list.id(u"old"_s)),
             (QStringList{u"Details"_s, u"Homepage"_s, u"Update"_s, u"Uninstall"_s}));
    for (const QString& name : {u"homeless"_s, u"odd"_s})
        QCOMPARE(offered(window, list.id(name)), (QStringList{u"Details"_s, u"Uninstall"_s}));
    window.manager.isRunningOperation.set(true);
    QVERIFY(!offered(window, list.id(u"old"_s)).contains(u"Update"_s));
    window.manager.isRunningOperation.set(false);
}

void RowMenusTest::opensTheHomepage() {
    const PackageListCase& list = PackageListCase::of(PackageType::formula);
    PageWindow window;
    list.publish(window.manager,
                 {withHomepage(list.package(u"jq"_s), u"https://example.org/jq"_s),
                  withHomepage(list.package(u"wget"_s), u"https://example.org/wget"_s)});
    list.show(window);
    const BrowserDouble browser;
    choose(window, u"formula-wget"_s, u"Homepage"_s);
    QCOMPARE(browser.opened(), QStringList{u"https://example.org/wget"_s});
    QCOMPARE(window.selection.selectedPackageID(), std::nullopt);
}

void RowMenusTest::upgradesAPackage_data() {
    PackageListCase::addRows();
}

void RowMenusTest::upgradesAPackage() {
    QFETCH(PackageType, type);
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    list.publish(window.manager, {Samples::outdated(list.package(u"old"_s))});
    list.setInstalled(window.brew, {list.package(u"old"_s)});
    list.show(window);
    choose(window, list.id(u"old"_s), u"Update"_s);
    QTRY_VERIFY(window.page().list().row(list.id(u"old"_s)).tags.isEmpty());
    const QString upgrade = type == PackageType::cask ? u"upgrade --cask old"_s : u"upgrade old"_s;
    QCOMPARE(window.brew.runs(), (QStringList{upgrade, ScriptedBrew::outdated, list.load}));
}

void RowMenusTest::leavesTheListsAfterAFailedUpgrade() {
    const PackageListCase& list = PackageListCase::of(PackageType::formula);
    PageWindow window;
    list.publish(window.manager, {Samples::outdated(list.package(u"old"_s))});
    list.show(window);
    window.brew.fail(u"upgrade old"_s);
    choose(window, u"formula-old"_s, u"Update"_s);
    QTRY_VERIFY(window.manager.operationOutput->endsWith(u"Failed to upgrade old"_s));
    QVERIFY(!*window.manager.isLoadingOutdated && !*window.manager.isLoadingFormulae);
    QCOMPARE(window.brew.runs(), QStringList{u"upgrade old"_s});
}

void RowMenusTest::offersWhatCanBeDoneWithAnUpdate() {
    PageWindow window;
    window.manager.formulae.set(
        {withHomepage(Samples::formula(u"wget"_s), u"https://example.org/wget"_s)});
    window.manager.outdatedFormulae.set({Samples::outdatedFormula(u"wget"_s)});
    window.manager.outdatedCasks.set({Samples::outdatedCask(u"iina"_s)});
    window.show(new UpdatesView(window.manager, window.selection));
    QCOMPARE(offered(window, u"formula-wget"_s),
             (QStringList{u"Details"_s, u"Homepage"_s, u"Update"_s}));
    // Nothing more is known of it.
    QCOMPARE(offered(window, u"cask-iina"_s), (QStringList{u"Details"_s, u"Update"_s}));
}

void RowMenusTest::offersWhatCanBeDoneWithAHit() {
    PageWindow window;
    window.manager.formulae.set(
        {withHomepage(Samples::formula(u"wget"_s), u"https://example.org/wget"_s)});
    window.manager.searchResults.set(
        {{u"wget"_s, PackageType::formula, true}, {u"curl"_s, PackageType::formula, false}});
    window.show(new SearchView(window.manager, window.selection));
    QCOMPARE(offered(window, u"formula-wget"_s), (QStringList{u"Details"_s, u"Homepage"_s}));
    QCOMPARE(offered(window, u"formula-curl"_s), (QStringList{u"Details"_s, u"Install"_s}));
}

LUMORA_UI_TEST_MAIN(RowMenusTest)
#include "tst_rowmenus.moc"
