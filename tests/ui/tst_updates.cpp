// SPDX-License-Identifier: MIT
#include "Input.h"
#include "LangManager.h"
#include "PageWindow.h"
#include "Samples.h"
#include "UiTest.h"
#include "pages/UpdatesView.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace {

using Kind = RowAction::Kind;

const QString updateAll = u"updateAllButton"_s;
const QString refresh = u"refreshButton"_s;

/// The page of updates over lists that the manager has already.
struct UpdatesWindow final {
    explicit UpdatesWindow(const QList<OutdatedPackage>& formulae = {},
                           const QList<OutdatedPackage>& casks = {}) {
        window.manager.outdatedFormulae.set(formulae);
        window.manager.outdatedCasks.set(casks);
    }

    void show() { window.show(new UpdatesView(window.manager, window.selection)); }

    [[nodiscard]] PageDriver page() const { return window.page(); }

    [[nodiscard]] ListDriver list() const { return window.page().list(); }

    [[nodiscard]] Kind action(const QString& id) const { return list().row(id).actions.at(0).kind; }

    [[nodiscard]] bool canUpdate(const QString& id) const {
        return list().row(id).actions.at(0).canTrigger();
    }

    PageWindow window;
    ScriptedBrew& brew{window.brew};
    BrewManager& manager{window.manager};
};

const OutdatedPackage wget = Samples::outdatedFormula(u"wget"_s);
const OutdatedPackage jq = Samples::outdatedFormula(u"jq"_s);
const OutdatedPackage iina = Samples::outdatedCask(u"iina"_s);

} // namespace

class UpdatesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void loadsOnlyWhatIsNotThere_data();
    void loadsOnlyWhatIsNotThere();
    void showsItsStatesInOrder();
    void keepsTheListWhileItIsLoadedAgain();
    void listsFormulaeBeforeCasks_data();
    void listsFormulaeBeforeCasks();
    void describesAnUpdate();
    void offersToUpdateAllOnlyWhenThereIsSomething();
    void disablesWhatIsRunning();
    void upgradesOnePackage_data();
    void upgradesOnePackage();
    void leavesTheListsAfterAFailedUpgrade();
    void spinsOnlyInTheRowThatWasPressed();
    void upgradesAll();
    void leavesTheListsAfterAFailedUpgradeOfAll();
    void waitsForOperationsOfOtherPages();
    void forgetsItsUpgradesWhenItIsShownAnew();
    void choosesWhatIsClicked();
    void speaksTheLanguage_data();
    void speaksTheLanguage();
};

void UpdatesTest::loadsOnlyWhatIsNotThere_data() {
    QTest::addColumn<QList<OutdatedPackage>>("formulae");
    QTest::addColumn<QList<OutdatedPackage>>("casks");
    QTest::addColumn<bool>("loads");
    using Packages = QList<OutdatedPackage>;
    QTest::newRow("nothing") << Packages{} << Packages{} << true;
    QTest::newRow("formulae") << Packages{wget} << Packages{} << false;
    QTest::newRow("casks") << Packages{} << Packages{iina} << false;
}

void UpdatesTest::loadsOnlyWhatIsNotThere() {
    QFETCH(QList<OutdatedPackage>, formulae);
    QFETCH(QList<OutdatedPackage>, casks);
    QFETCH(bool, loads);
    UpdatesWindow updates(formulae, casks);
    updates.show();
    QCOMPARE(*updates.manager.isLoadingOutdated, loads);
    // Being shown once more is no first time.
    QTRY_VERIFY(!*updates.manager.isLoadingOutdated);
    updates.window.column.hide();
    updates.window.column.show();
    QVERIFY(!*updates.manager.isLoadingOutdated);
    QCOMPARE(updates.brew.runs(), loads ? QStringList{ScriptedBrew::outdated} : QStringList());
}

void UpdatesTest::showsItsStatesInOrder() {
    UpdatesWindow updates;
    updates.brew.setOutdated({wget, iina});
    updates.brew.hold(ScriptedBrew::outdated);
    updates.show();
    QCOMPARE(updates.page().state(), u"Checking for updates..."_s);
    QVERIFY(updates.page().isBusy());
    QCOMPARE(updates.page().title(), u"Updates (0)"_s);
    updates.brew.release(ScriptedBrew::outdated);
    QTRY_VERIFY(updates.page().hasList());
    QCOMPARE(updates.page().title(), u"Updates (2)"_s);

    updates.brew.setOutdated({});
    updates.page().press(refresh);
    QTRY_COMPARE(updates.page().state(), u"All packages are up to date"_s);
    QCOMPARE(updates.page().stateSymbol(), u"checkmark.circle"_s);
    QVERIFY(!updates.page().isBusy());
    QCOMPARE(updates.page().title(), u"Updates (0)"_s);
    QVERIFY(!updates.page().hasButton(updateAll));
}

void UpdatesTest::keepsTheListWhileItIsLoadedAgain() {
    UpdatesWindow updates({}, {iina});
    updates.show();
    updates.brew.fail(ScriptedBrew::outdated);
    updates.brew.hold(ScriptedBrew::outdated);
    updates.page().press(refresh);
    QTRY_VERIFY(!updates.page().button(refresh).isEnabled());
    QCOMPARE(updates.page().state(), QString());
    QVERIFY(updates.page().hasList());
    updates.page().press(refresh);
    updates.brew.release(ScriptedBrew::outdated);
    QTRY_VERIFY(updates.page().button(refresh).isEnabled());
    QVERIFY(updates.page().hasList());
    QCOMPARE(updates.brew.runs(), QStringList{ScriptedBrew::outdated});
}

void UpdatesTest::listsFormulaeBeforeCasks_data() {
    QTest::addColumn<QList<OutdatedPackage>>("formulae");
    QTest::addColumn<QList<OutdatedPackage>>("casks");
    QTest::addColumn<QStringList>("rows");
    using Packages = QList<OutdatedPackage>;
    QTest::newRow("both") << Packages{wget, jq} << Packages{iina}
                          << QStringList{u"Formulae (2)"_s, u"wget, 1.0 → 2.0"_s,
                                         u"jq, 1.0 → 2.0"_s, u"Casks (1)"_s, u"iina, 10 → 11"_s};
    QTest::newRow("formulae") << Packages{wget} << Packages{}
                              << QStringList{u"Formulae (1)"_s, u"wget, 1.0 → 2.0"_s};
    QTest::newRow("casks") << Packages{} << Packages{iina}
                           << QStringList{u"Casks (1)"_s, u"iina, 10 → 11"_s};
}

void UpdatesTest::listsFormulaeBeforeCasks() {
    QFETCH(QList<OutdatedPackage>, formulae);
    QFETCH(QList<OutdatedPackage>, casks);
    QFETCH(QStringList, rows);
    UpdatesWindow updates(formulae, casks);
    updates.show();
    QCOMPARE(updates.list().texts(), rows);
    QCOMPARE(updates.page().title(), u"Updates (%1)"_s.arg(formulae.size() + casks.size()));
}

void UpdatesTest::describesAnUpdate() {
    UpdatesWindow updates({wget}, {iina});
    updates.show();
    const Row formula = updates.list().row(u"formula-wget"_s);
    QCOMPARE(formula.title, u"wget"_s);
    QCOMPARE(formula.subtitle, u"1.0"_s);
    QCOMPARE(formula.newVersion, u"2.0"_s);
    QCOMPARE(formula.symbol, u"shippingbox"_s);
    QCOMPARE(formula.symbolTone, Row::Tone::Formula);
    QCOMPARE(formula.actions.at(0).kind, Kind::Button);
    QCOMPARE(formula.actions.at(0).title, u"Update"_s);
    const Row cask = updates.list().row(u"cask-iina"_s);
    QCOMPARE(cask.symbol, u"macwindow"_s);
    QCOMPARE(cask.symbolTone, Row::Tone::Cask);
    QCOMPARE(cask.version, QString());
    QCOMPARE(cask.tags.size(), 0);
}

void UpdatesTest::offersToUpdateAllOnlyWhenThereIsSomething() {
    UpdatesWindow updates({wget});
    updates.show();
    QVERIFY(updates.page().hasButton(updateAll));
    QCOMPARE(updates.page().button(updateAll).text(), u"Update All"_s);
    QCOMPARE(updates.page().button(updateAll).toolTip(), u"<qt>Update all packages</qt>"_s);
    QVERIFY(!updates.page().button(updateAll).icon().isNull());
    QCOMPARE(updates.page().button(refresh).toolTip(), u"<qt>Check for updates</qt>"_s);
    updates.manager.outdatedFormulae.set({});
    QTRY_VERIFY(!updates.page().hasButton(updateAll));
    QVERIFY(updates.page().hasButton(refresh));
    updates.manager.outdatedCasks.set({iina});
    QTRY_VERIFY(updates.page().hasButton(updateAll));
}

void UpdatesTest::disablesWhatIsRunning() {
    UpdatesWindow updates({wget, jq}, {iina});
    updates.show();
    updates.brew.fail(u"upgrade wget"_s);
    updates.brew.hold(u"upgrade wget"_s);
    updates.list().clickAction(u"formula-wget"_s);
    QTRY_COMPARE(updates.action(u"formula-wget"_s), Kind::Spinner);
    for (const QString& id : {u"formula-jq"_s, u"cask-iina"_s}) {
        QCOMPARE(updates.action(id), Kind::Button);
        QVERIFY(!updates.canUpdate(id));
        updates.list().clickAction(id);
    }
    QVERIFY(!updates.page().button(updateAll).isEnabled());
    QVERIFY(updates.page().button(refresh).isEnabled());
    updates.page().press(updateAll);
    updates.brew.release(u"upgrade wget"_s);
    QTRY_VERIFY(updates.canUpdate(u"formula-wget"_s));
    QVERIFY(updates.canUpdate(u"formula-jq"_s) && updates.canUpdate(u"cask-iina"_s));
    QVERIFY(updates.page().button(updateAll).isEnabled());
    QCOMPARE(updates.brew.runs().constFirst(), u"upgrade wget"_s);
    QVERIFY(!updates.brew.runs().contains(u"upgrade jq"_s));
    QVERIFY(!updates.brew.runs().contains(u"upgrade"_s));
}

void UpdatesTest::upgradesOnePackage_data() {
    QTest::addColumn<QString>("id");
    QTest::addColumn<QStringList>("runs");
    QTest::newRow("formula") << u"formula-wget"_s
                             << QStringList{u"upgrade wget"_s, ScriptedBrew::outdated,
                                            ScriptedBrew::infoFormulae};
    QTest::newRow("cask") << u"cask-iina"_s
                          << QStringList{u"upgrade --cask iina"_s, ScriptedBrew::outdated,
                                         ScriptedBrew::infoCasks};
}

void UpdatesTest::upgradesOnePackage() {
    QFETCH(QString, id);
    QFETCH(QStringList, runs);
    UpdatesWindow updates({wget, jq}, {iina});
    updates.show();
    updates.brew.setOutdated({jq});
    updates.brew.hold(ScriptedBrew::outdated);
    updates.brew.hold(runs.constLast());
    updates.list().clickAction(id);
    // The installed list is loaded after the outdated one, not beside it.
    QTRY_COMPARE(updates.brew.runs(), runs.first(2));
    QTRY_COMPARE(updates.action(id), Kind::Button);
    updates.brew.release(ScriptedBrew::outdated);
    QTRY_COMPARE(updates.brew.runs(), runs);
    QCOMPARE(updates.page().title(), u"Updates (1)"_s);
    updates.brew.release(runs.constLast());
    QTRY_VERIFY(!*updates.manager.isLoadingFormulae && !*updates.manager.isLoadingCasks);
}

void UpdatesTest::leavesTheListsAfterAFailedUpgrade() {
    UpdatesWindow updates({wget}, {iina});
    updates.show();
    updates.brew.fail(u"upgrade wget"_s);
    updates.list().clickAction(u"formula-wget"_s);
    QTRY_COMPARE(updates.action(u"formula-wget"_s), Kind::Spinner);
    QTRY_COMPARE(updates.action(u"formula-wget"_s), Kind::Button);
    QVERIFY(updates.canUpdate(u"formula-wget"_s));
    QVERIFY(!*updates.manager.isLoadingOutdated && !*updates.manager.isLoadingFormulae);
    QCOMPARE(updates.brew.runs(), QStringList{u"upgrade wget"_s});
    QVERIFY(updates.manager.operationOutput->endsWith("Failed to upgrade wget"_L1));
}

void UpdatesTest::spinsOnlyInTheRowThatWasPressed() {
    UpdatesWindow updates({wget, jq}, {iina});
    updates.show();
    updates.brew.hold(u"upgrade --cask iina"_s);
    updates.list().clickAction(u"cask-iina"_s);
    QTRY_COMPARE(updates.action(u"cask-iina"_s), Kind::Spinner);
    QCOMPARE(updates.action(u"formula-wget"_s), Kind::Button);
    QCOMPARE(updates.action(u"formula-jq"_s), Kind::Button);
    // Also in lists that have been loaded meanwhile.
    updates.manager.outdatedCasks.set({Samples::outdatedCask(u"alfred"_s), iina});
    QTRY_COMPARE(updates.page().title(), u"Updates (4)"_s);
    QCOMPARE(updates.action(u"cask-iina"_s), Kind::Spinner);
    QCOMPARE(updates.action(u"cask-alfred"_s), Kind::Button);
    updates.brew.release(u"upgrade --cask iina"_s);
    QTRY_VERIFY(!*updates.manager.isRunningOperation);
}

void UpdatesTest::upgradesAll() {
    UpdatesWindow updates({wget}, {iina});
    updates.show();
    updates.brew.hold(u"upgrade"_s);
    updates.page().press(updateAll);
    QTRY_VERIFY(!updates.page().button(updateAll).isEnabled());
    QVERIFY(!updates.canUpdate(u"formula-wget"_s));
    QVERIFY(!updates.canUpdate(u"cask-iina"_s));
    QCOMPARE(updates.action(u"formula-wget"_s), Kind::Button);
    updates.page().press(updateAll);
    updates.list().clickAction(u"formula-wget"_s);
    updates.brew.release(u"upgrade"_s);
    QTRY_COMPARE(updates.page().state(), u"All packages are up to date"_s);
    QTRY_VERIFY(!*updates.manager.isLoadingFormulae && !*updates.manager.isLoadingCasks &&
                !*updates.manager.isLoadingTaps);
    QStringList runs = updates.brew.runs();
    QCOMPARE(runs.takeFirst(), u"upgrade"_s);
    runs.sort();
    QCOMPARE(runs, (QStringList{ScriptedBrew::infoCasks, ScriptedBrew::infoFormulae,
                                ScriptedBrew::outdated, ScriptedBrew::tap}));
}

void UpdatesTest::leavesTheListsAfterAFailedUpgradeOfAll() {
    UpdatesWindow updates({wget}, {iina});
    updates.show();
    updates.brew.fail(u"upgrade"_s);
    updates.page().press(updateAll);
    QTRY_VERIFY(updates.manager.operationOutput->endsWith("Upgrade failed"_L1));
    QTRY_VERIFY(updates.page().button(updateAll).isEnabled());
    QVERIFY(updates.canUpdate(u"formula-wget"_s));
    QVERIFY(!*updates.manager.isLoadingOutdated && !*updates.manager.isLoadingTaps);
    QCOMPARE(updates.brew.runs(), QStringList{u"upgrade"_s});
}

void UpdatesTest::waitsForOperationsOfOtherPages() {
    UpdatesWindow updates({wget});
    updates.show();
    updates.brew.hold(u"tap a/b"_s);
    updates.manager.addTap(u"a/b"_s);
    QTRY_VERIFY(!updates.page().button(updateAll).isEnabled());
    // A row's own button isn't part of that.
    QVERIFY(updates.canUpdate(u"formula-wget"_s));
    updates.brew.release(u"tap a/b"_s);
    QTRY_VERIFY(updates.page().button(updateAll).isEnabled());
}

void UpdatesTest::forgetsItsUpgradesWhenItIsShownAnew() {
    UpdatesWindow updates({wget}, {iina});
    updates.show();
    updates.brew.hold(u"upgrade wget"_s);
    updates.list().clickAction(u"formula-wget"_s);
    QTRY_COMPARE(updates.action(u"formula-wget"_s), Kind::Spinner);
    updates.show();
    QTRY_COMPARE(updates.action(u"formula-wget"_s), Kind::Button);
    QVERIFY(updates.canUpdate(u"cask-iina"_s));
    updates.brew.release(u"upgrade wget"_s);
    QTRY_COMPARE(updates.page().state(), u"All packages are up to date"_s);
    QTRY_VERIFY(updates.brew.runs().contains(ScriptedBrew::infoFormulae));
}

void UpdatesTest::choosesWhatIsClicked() {
    UpdatesWindow updates({wget}, {iina});
    updates.show();
    updates.list().click(u"cask-iina"_s);
    QCOMPARE(updates.window.selection.selectedPackageID(), u"cask-iina"_s);
    QTRY_COMPARE(updates.list().selectedIds(), QStringList{u"cask-iina"_s});
    QCOMPARE(updates.brew.runs(), QStringList());
}

void UpdatesTest::speaksTheLanguage_data() {
    QTest::addColumn<Lang>("lang");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("ko") << Lang::ko
                        << QStringList{u"업데이트 (1)"_s, u"모두 업데이트"_s, u"업데이트 확인"_s,
                                       u"업데이트"_s, u"모든 패키지가 최신 상태입니다"_s};
    QTest::newRow("ja") << Lang::ja
                        << QStringList{u"アップデート (1)"_s, u"すべてアップデート"_s,
                                       u"アップデートを確認"_s, u"アップデート"_s,
                                       u"すべてのパッケージは最新です"_s};
}

void UpdatesTest::speaksTheLanguage() {
    QFETCH(Lang, lang);
    QFETCH(QStringList, texts);
    LangManager::shared().setCurrent(lang);
    const auto restore = qScopeGuard([] { LangManager::shared().setCurrent(Lang::en); });
    UpdatesWindow updates({wget});
    updates.show();
    QCOMPARE(updates.page().title(), texts.at(0));
    QCOMPARE(updates.page().button(updateAll).text(), texts.at(1));
    QCOMPARE(updates.page().button(refresh).accessibleName(), texts.at(2));
    QCOMPARE(updates.list().row(u"formula-wget"_s).actions.at(0).title, texts.at(3));
    QCOMPARE(updates.list().texts().constFirst(), u"Formulae (1)"_s);
    updates.manager.outdatedFormulae.set({});
    QTRY_COMPARE(updates.page().state(), texts.at(4));
}

LUMORA_UI_TEST_MAIN(UpdatesTest)
#include "tst_updates.moc"
