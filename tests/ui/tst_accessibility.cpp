// SPDX-License-Identifier: MIT
#include "AlertDriver.h"
#include "AppScene.h"
#include "ControlTree.h"
#include "Find.h"
#include "Input.h"
#include "Samples.h"
#include "SheetDriver.h"
#include "UiTest.h"
#include "widgets/RowListView.h"
#include "widgets/Sheet.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

using enum SidebarCategory;

namespace {

/// What a screen reader hears of a list, row by row.
QStringList spoken(QWidget& list) {
    const QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(&list);
    QStringList names;
    for (int i = 0; i < interface->childCount(); ++i)
        names.append(interface->child(i)->text(QAccessible::Name));
    return names;
}

QAccessible::Role roleOf(QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->role();
}

QAccessibleInterface* rowOf(QWidget& list, int row) {
    return QAccessible::queryAccessibleInterface(&list)->child(row);
}

/// Everything below it that is read by its name, in the order of reading.
void collectNames(QAccessibleInterface* interface, QStringList* names) {
    if (interface->state().invisible)
        return;
    if (const QString name = interface->text(QAccessible::Name); !name.isEmpty())
        names->append(name);
    for (int i = 0; i < interface->childCount(); ++i)
        collectNames(interface->child(i), names);
}

QStringList readBelow(QWidget& root) {
    QStringList names;
    collectNames(QAccessible::queryAccessibleInterface(&root), &names);
    return names;
}

} // namespace

class AccessibilityTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void namesEverythingThatTakesTheFocus_data();
    void namesEverythingThatTakesTheFocus();
    void namesTheControlsOfAnAlert_data();
    void namesTheControlsOfAnAlert();
    void readsTheRowsOfAList_data();
    void readsTheRowsOfAList();
    void readsTheSidebarWithItsCounts();
    void readsTheStatesOfAPage();
    void readsTheDetail();
    void readsFromListsThatAreReplaced();
    void readsWhichRowIsSelected();
    void findsTheControlsOfARow();
    void pressesTheControlsOfARow();
    void offersWhatCanBeDoneWithARow();
    void opensARow();
    void keepsItsPlaceWhenARowHasGone();
    void opensACategory();
    void leavesWhatASheetCovers();
    void opensOneSheetForTwoPresses();
    void opensACategoryFromBehindTheDetail();
    void knowsWhereTheKeyboardIsInARow();
    void readsThatARowIsBusy();
    void forgetsControlsThatHaveGone();
    void knowsWhatThingsAre();
    void knowsASheetForADialog();
    void findsTheOpenMenu();
    void readsInTheOrderOfTheWindow();
    void readsTheFactsBeforeTheReport();
    void readsNoMarkup_data();
    void readsNoMarkup();
};

void AccessibilityTest::namesEverythingThatTakesTheFocus_data() {
    QTest::addColumn<const AppScene*>("scene");
    QTest::addColumn<Lang>("lang");
    for (const Lang lang : allLangs) {
        for (const AppScene& scene : AppScene::all())
            QTest::addRow("%s, %s", scene.name, qUtf8Printable(rawValue(lang))) << &scene << lang;
    }
}

void AccessibilityTest::namesEverythingThatTakesTheFocus() {
    QFETCH(const AppScene*, scene);
    QFETCH(Lang, lang);
    AppWindow app(lang);
    app.showLoaded();
    AppScene::fill(app);
    scene->enter(app);
    QCOMPARE(ControlTree::withoutName(app.window), QString());
}

void AccessibilityTest::namesTheControlsOfAnAlert_data() {
    QTest::addColumn<SidebarCategory>("category");
    for (const SidebarCategory category : {formulae, casks, taps, settings})
        QTest::newRow(qUtf8Printable(rawValue(category))) << category;
}

void AccessibilityTest::namesTheControlsOfAnAlert() {
    QFETCH(SidebarCategory, category);
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    app.choose(category);
    if (category == settings)
        app.page().press(u"cleanupButton"_s);
    else
        app.page().list().clickAction(app.page().list().ids().constFirst());
    const AlertDriver alert;
    QCOMPARE(ControlTree::withoutName(alert.card()), QString());
    for (const QString& button : alert.buttons())
        QVERIFY(!button.contains(u'&'));
    QVERIFY(
        !QAccessible::queryAccessibleInterface(&alert.card())->text(QAccessible::Name).isEmpty());
    alert.escape();
}

void AccessibilityTest::readsTheRowsOfAList_data() {
    QTest::addColumn<SidebarCategory>("category");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("formulae") << formulae
                              << QStringList{u"jq, JSON processor, 1.2"_s,
                                             u"wget, Fetches files, 1.2, outdated, dependency"_s};
    QTest::newRow("casks") << casks << QStringList{u"iina, Media player, 1.2"_s};
    QTest::newRow("updates") << updates
                             << QStringList{u"Formulae (1)"_s, u"wget, 1.0 → 2.0"_s, u"Casks (1)"_s,
                                            u"iina, 10 → 11"_s};
    QTest::newRow("search") << search
                            << QStringList{u"Formulae (2)"_s, u"curl"_s, u"jq, Installed"_s,
                                           u"Casks (1)"_s, u"iina"_s};
    QTest::newRow("taps") << taps << QStringList{u"homebrew/core"_s, u"user/tools"_s};
}

void AccessibilityTest::readsTheRowsOfAList() {
    QFETCH(SidebarCategory, category);
    QFETCH(QStringList, rows);
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    app.choose(category);
    QCoreApplication::processEvents();
    RowListView& list = app.page().list().view();
    QCOMPARE(spoken(list), rows);
    QCOMPARE(roleOf(list), QAccessible::List);
    const QAccessibleInterface* const row =
        QAccessible::queryAccessibleInterface(&list)->child(static_cast<int>(rows.size()) - 1);
    QCOMPARE(row->role(), QAccessible::ListItem);
    QVERIFY(!row->rect().isEmpty());
}

void AccessibilityTest::readsTheSidebarWithItsCounts() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    QCOMPARE(
        spoken(app.sidebar().view()),
        (QStringList{u"Packages"_s, u"Formulae, 2"_s, u"Casks, 1"_s, u"Actions"_s, u"Updates, 2"_s,
                     u"Search"_s, u"System"_s, u"Taps, 2"_s, u"Settings"_s, u"About"_s}));
    LangManager::shared().setCurrent(Lang::ko);
    QTRY_COMPARE(spoken(app.sidebar().view()).value(4), u"업데이트, 2"_s);
}

void AccessibilityTest::readsTheStatesOfAPage() {
    AppWindow app;
    app.showLoaded();
    const auto isRead = [&app](const QString& text) {
        for (QLabel* const label : app.window.findChildren<QLabel*>()) {
            if (label->isVisible() &&
                QAccessible::queryAccessibleInterface(label)->text(QAccessible::Name) == text)
                return true;
        }
        return false;
    };
    QVERIFY(isRead(u"No formulae installed"_s));
    app.manager.isLoadingFormulae.set(true);
    QTRY_VERIFY(isRead(u"Loading formulae..."_s));
}

void AccessibilityTest::readsTheDetail() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    app.window.content()->selection().setSelectedPackageID(u"formula-wget"_s);
    const SheetDriver sheet(app.window);
    QStringList names;
    for (QWidget* const widget : sheet.panel().findChildren<QWidget*>()) {
        if (const auto* interface = QAccessible::queryAccessibleInterface(widget))
            names.append(interface->text(QAccessible::Name));
    }
    for (const QString& text :
         {u"wget"_s, u"Formula"_s, u"v1.1"_s, u"Update available"_s, u"Name: homebrew/core/wget"_s,
          u"https://example.org/wget"_s, u"openssl@3"_s, u"Close"_s})
        QVERIFY2(names.contains(text), qPrintable(text));
}

void AccessibilityTest::readsFromListsThatAreReplaced() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    RowListView& list = app.page().list().view();
    QCOMPARE(spoken(list).size(), 2);
    app.manager.formulae.set(Samples::manyFormulae(3));
    QTRY_COMPARE(spoken(list).size(), 3);
    QVERIFY(spoken(list).constFirst().startsWith(u"package-00000, "_s));
    app.page().typeToSearch(u"00001"_s);
    QTRY_COMPARE(spoken(list).size(), 1);
    QVERIFY(spoken(list).constFirst().startsWith(u"package-00001, "_s));
}

void AccessibilityTest::readsWhichRowIsSelected() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    RowListView& list = app.page().list().view();
    QVERIFY(rowOf(list, 1)->state().selectable);
    QVERIFY(!rowOf(list, 1)->state().selected);
    app.window.content()->selection().setSelectedPackageID(u"formula-wget"_s);
    QVERIFY(rowOf(list, 1)->state().selected);
    QVERIFY(!rowOf(list, 0)->state().selected);
    app.window.content()->selection().setSelectedPackageID(std::nullopt);
    QVERIFY(!rowOf(list, 1)->state().selected);
    app.choose(taps);
    QCoreApplication::processEvents();
    QVERIFY(!rowOf(app.page().list().view(), 0)->state().selectable);
}

void AccessibilityTest::findsTheControlsOfARow() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    app.choose(search);
    QCoreApplication::processEvents();
    RowListView& list = app.page().list().view();
    // A heading, a formula to install, one that is installed.
    QCOMPARE(rowOf(list, 0)->role(), QAccessible::Heading);
    QCOMPARE(rowOf(list, 0)->childCount(), 0);
    QCOMPARE(rowOf(list, 1)->childCount(), 1);
    QCOMPARE(rowOf(list, 2)->childCount(), 0);
    QAccessibleInterface* const button = rowOf(list, 1)->child(0);
    QCOMPARE(button->role(), QAccessible::Button);
    QCOMPARE(button->text(QAccessible::Name), u"Install"_s);
    QCOMPARE(button->parent(), rowOf(list, 1));
    QCOMPARE(rowOf(list, 1)->indexOfChild(button), 0);
    const QPoint centre = button->rect().center();
    QVERIFY(rowOf(list, 1)->rect().contains(button->rect()));
    QCOMPARE(QAccessible::queryAccessibleInterface(&list)->childAt(centre.x(), centre.y()),
             rowOf(list, 1));
    QCOMPARE(rowOf(list, 1)->childAt(centre.x(), centre.y()), button);
}

void AccessibilityTest::pressesTheControlsOfARow() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    QAccessibleInterface* const trash = rowOf(app.page().list().view(), 1)->child(0);
    QCOMPARE(trash->text(QAccessible::Name), u"Uninstall"_s);
    trash->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    const AlertDriver alert;
    QVERIFY(alert.message().contains(u"wget"_s));
    alert.escape();
}

void AccessibilityTest::offersWhatCanBeDoneWithARow() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    QAccessibleActionInterface* const row = rowOf(app.page().list().view(), 1)->actionInterface();
    QCOMPARE(row->actionNames(),
             (QStringList{QAccessibleActionInterface::pressAction(), u"Homepage"_s, u"Update"_s,
                          u"Uninstall"_s, QAccessibleActionInterface::setFocusAction()}));
    row->doAction(u"Uninstall"_s);
    const AlertDriver alert;
    QVERIFY(alert.message().contains(u"wget"_s));
    alert.escape();
}

void AccessibilityTest::opensARow() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    rowOf(app.page().list().view(), 1)
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(app.window.content()->selection().selectedPackageID(), u"formula-wget"_s);
    QCOMPARE(app.page().list().currentId(), u"formula-wget"_s);
}

void AccessibilityTest::keepsItsPlaceWhenARowHasGone() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    const QString first = app.page().list().ids().constFirst();
    RowListView& list = app.page().list().view();
    list.setFocus();
    list.setCurrentIndex(list.model()->index(0, 0));
    // The page is filled anew before it comes to the press.
    app.manager.formulae.set(app.manager.formulae->first(1));
    rowOf(list, 1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(app.page().list().ids(), QStringList{first});
    QCoreApplication::processEvents();
    QCOMPARE(app.page().list().currentId(), first);
    QVERIFY(!app.window.content()->selection().selectedPackageID());
}

void AccessibilityTest::opensACategory() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    QAccessibleInterface* const item = rowOf(app.sidebar().view(), 5);
    QCOMPARE(item->text(QAccessible::Name), u"Search"_s);
    QVERIFY(!item->state().selected);
    item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(app.window.content()->selectedCategory(), search);
    QVERIFY(item->state().selected);
    // As after a click.
    QTRY_COMPARE(app.window.focusWidget()->objectName(), u"searchField"_s);
}

void AccessibilityTest::leavesWhatASheetCovers() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    app.choose(taps);
    app.page().press(u"addTapButton"_s);
    const SheetDriver adding(app.window);
    auto& name = require<QLineEdit>(adding.panel(), u"tapNameField"_s);
    name.setText(u"half/typed"_s);
    QAccessibleActionInterface* const row = rowOf(app.page().list().view(), 0)->actionInterface();
    QAccessibleActionInterface* const trash =
        rowOf(app.page().list().view(), 0)->child(0)->actionInterface();
    QAccessibleActionInterface* const item = rowOf(app.sidebar().view(), 5)->actionInterface();
    row->doAction(u"Remove"_s);
    row->doAction(QAccessibleActionInterface::setFocusAction());
    trash->doAction(QAccessibleActionInterface::pressAction());
    item->doAction(QAccessibleActionInterface::setFocusAction());
    item->doAction(QAccessibleActionInterface::pressAction());
    QCoreApplication::processEvents();
    QCOMPARE(app.window.content()->selectedCategory(), taps);
    QCOMPARE(Sheet::allOver(&app.window), QList<Sheet*>{&adding.sheet()});
    QCOMPARE(app.window.focusWidget(), &name);
    QCOMPARE(name.text(), u"half/typed"_s);
}

void AccessibilityTest::opensOneSheetForTwoPresses() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    QAccessibleInterface* const row = rowOf(app.page().list().view(), 1);
    QAccessibleActionInterface* const trash = row->child(0)->actionInterface();
    trash->doAction(QAccessibleActionInterface::pressAction());
    row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCoreApplication::processEvents();
    QCOMPARE(Sheet::allOver(&app.window).size(), 1);
    AlertDriver().escape();
}

void AccessibilityTest::opensACategoryFromBehindTheDetail() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    app.window.content()->selection().setSelectedPackageID(u"formula-wget"_s);
    QVERIFY(SheetDriver::isOpen(app.window));
    rowOf(app.sidebar().view(), 5)
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(app.window.content()->selectedCategory(), search);
    QVERIFY(!SheetDriver::isOpen(app.window));
}

void AccessibilityTest::knowsWhereTheKeyboardIsInARow() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    RowListView& list = app.page().list().view();
    list.setFocus();
    QAccessibleInterface* const row = rowOf(list, 0);
    QVERIFY(row->state().focused);
    Input::key(Qt::Key_Right);
    QVERIFY(row->child(0)->state().focused);
    QVERIFY(!row->state().focused);
    QCOMPARE(QAccessible::queryAccessibleInterface(&list)->focusChild(), row->child(0));
    Input::key(Qt::Key_Left);
    QVERIFY(row->state().focused);
    QVERIFY(!row->child(0)->state().focused);
}

void AccessibilityTest::readsThatARowIsBusy() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    app.choose(updates);
    QCoreApplication::processEvents();
    RowListView& list = app.page().list().view();
    app.brew.hold(u"upgrade --formula wget"_s);
    QAccessibleInterface* const button = rowOf(list, 1)->child(0);
    QCOMPARE(button->role(), QAccessible::Button);
    QVERIFY(!button->state().busy);
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_VERIFY(rowOf(list, 1)->child(0)->state().busy);
    QCOMPARE(rowOf(list, 1)->child(0)->role(), QAccessible::Animation);
    QCOMPARE(rowOf(list, 1)->child(0)->actionInterface()->actionNames(), QStringList());
    // Nothing else can be upgraded meanwhile.
    QVERIFY(rowOf(list, 3)->child(0)->state().disabled);
}

void AccessibilityTest::forgetsControlsThatHaveGone() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    RowListView& list = app.page().list().view();
    const QAccessible::Id row = QAccessible::uniqueId(rowOf(list, 1));
    const QAccessible::Id button = QAccessible::uniqueId(rowOf(list, 1)->child(0));
    app.manager.formulae.set(Samples::manyFormulae(1));
    QTRY_COMPARE(spoken(list).size(), 1);
    QVERIFY(QAccessible::accessibleInterface(row) == nullptr);
    QVERIFY(QAccessible::accessibleInterface(button) == nullptr);
}

void AccessibilityTest::knowsWhatThingsAre() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    QCOMPARE(roleOf(app.window), QAccessible::Window);
    QCOMPARE(readBelow(app.window).constFirst(), u"Lumora"_s);
    app.choose(settings);
    QWidget& picker = require<QWidget>(app.window, u"languagePicker"_s);
    QCOMPARE(roleOf(picker), QAccessible::Grouping);
    QCOMPARE(QAccessible::queryAccessibleInterface(&picker)->text(QAccessible::Name),
             u"Language"_s);
    QAccessibleInterface* const english = rowOf(picker, 1);
    QCOMPARE(english->role(), QAccessible::RadioButton);
    QVERIFY(english->state().checked);
    app.choose(about);
    QAbstractButton& link = require<QAbstractButton>(app.window, u"link-house"_s);
    QCOMPARE(roleOf(link), QAccessible::Link);
    QVERIFY(QAccessible::queryAccessibleInterface(&link)->actionInterface()->actionNames().contains(
        QAccessibleActionInterface::pressAction()));
}

void AccessibilityTest::knowsASheetForADialog() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    app.window.content()->selection().setSelectedPackageID(u"formula-wget"_s);
    Sheet& detail = SheetDriver(app.window).sheet();
    const QAccessibleInterface* const dialog = QAccessible::queryAccessibleInterface(&detail);
    QCOMPARE(dialog->role(), QAccessible::Dialog);
    QVERIFY(dialog->state().modal);
    QCOMPARE(dialog->text(QAccessible::Name), u"wget"_s);
    app.window.content()->selection().setSelectedPackageID(u"formula-jq"_s);
    QTRY_COMPARE(dialog->text(QAccessible::Name), u"jq"_s);
    QCOMPARE(roleOf(require<QWidget>(detail, u"homepageLink"_s)), QAccessible::Link);
    app.window.content()->selection().setSelectedPackageID(std::nullopt);
    app.choose(taps);
    app.page().press(u"addTapButton"_s);
    Sheet& adding = SheetDriver(app.window).sheet();
    QCOMPARE(roleOf(adding), QAccessible::Dialog);
    QCOMPARE(adding.accessibleName(), u"Add Tap"_s);
}

void AccessibilityTest::findsTheOpenMenu() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    QAccessibleInterface* const window = QAccessible::queryAccessibleInterface(&app.window);
    const int without = window->childCount();
    Input::key(Qt::Key_F10);
    QTRY_COMPARE(window->childCount(), without + 1);
    QAccessibleInterface* const menu = window->child(without);
    QCOMPARE(menu->role(), QAccessible::PopupMenu);
    QCOMPARE(window->indexOfChild(menu), without);
    QVERIFY(readBelow(*app.window.applicationMenu()).contains(u"Check for Updates..."_s));
    app.window.applicationMenu()->close();
    QCOMPARE(window->childCount(), without);
}

void AccessibilityTest::readsInTheOrderOfTheWindow() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    app.manager.errorMessage.set(u"out of reach"_s);
    QCoreApplication::processEvents();
    const QStringList read = readBelow(app.window);
    QList<qsizetype> places;
    for (const QString& name : {u"Formulae, 2"_s, u"Formulae (2)"_s, u"Filter formulae"_s,
                                u"Refresh formulae list"_s, u"out of reach"_s, u"Formulae"_s}) {
        QVERIFY2(read.contains(name), qPrintable(name));
        places.append(read.indexOf(name));
    }
    // The menu below the sidebar is named like the window, and like the sidebar.
    places.append(read.lastIndexOf(u"Lumora"_s));
    QVERIFY2(std::ranges::is_sorted(places), qPrintable(read.join(u"\n"_s)));
}

void AccessibilityTest::readsTheFactsBeforeTheReport() {
    AppWindow app;
    app.brew.answer(u"info wget"_s, "==> wget\n");
    app.brew.answer(u"info jq"_s, "==> jq\n");
    app.showLoaded();
    AppScene::fill(app);
    app.window.content()->selection().setSelectedPackageID(u"formula-jq"_s);
    Sheet& sheet = SheetDriver(app.window).sheet();
    app.window.content()->selection().setSelectedPackageID(u"formula-wget"_s);
    // Whichever report comes first, it may find the other's facts, or none that are shown yet.
    const QString fact = u"Name: homebrew/core/wget"_s;
    QTRY_VERIFY(readBelow(sheet).contains(u"brew info"_s) && readBelow(sheet).contains(fact));
    const QStringList read = readBelow(sheet);
    QVERIFY(read.indexOf(u"Details"_s) < read.indexOf(u"Formula"_s));
    QVERIFY(read.indexOf(u"Formula"_s) < read.indexOf(fact));
    QVERIFY(read.indexOf(u"openssl@3"_s) < read.indexOf(u"brew info"_s));
    QVERIFY(read.lastIndexOf(u"brew info"_s) < read.indexOf(u"Close"_s));
}

void AccessibilityTest::readsNoMarkup_data() {
    QTest::addColumn<const AppScene*>("scene");
    for (const AppScene& scene : AppScene::all())
        QTest::newRow(scene.name) << &scene;
}

void AccessibilityTest::readsNoMarkup() {
    QFETCH(const AppScene*, scene);
    AppWindow app;
    app.window.resize(700, 450);
    app.showLoaded();
    AppScene::fill(app);
    scene->enter(app);
    const QStringList texts =
        ControlTree::spoken(app.window) + ControlTree::spoken(*app.window.applicationMenu());
    QVERIFY(texts.contains(u"Formulae, 2"_s) || texts.contains(u"Formulae"_s));
    QVERIFY(texts.contains(u"Check for Updates..."_s));
    static const QRegularExpression markup(u"<[A-Za-z!/]|&\\w+;"_s);
    QCOMPARE(texts.filter(markup), QStringList());
}

LUMORA_UI_TEST_MAIN(AccessibilityTest)
#include "tst_accessibility.moc"
