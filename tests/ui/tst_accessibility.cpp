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

#include <QAccessible>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QRegularExpression>

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

/// Does what the toolkit does by itself on platforms where a screen reader can be listening: it
/// forgets the rows it has read when it is told that all of them are others.
void announceResets(QAbstractItemView& view) {
    QObject::connect(view.model(), &QAbstractItemModel::modelReset, &view, [&view] {
        QAccessibleTableModelChangeEvent event(&view, QAccessibleTableModelChangeEvent::ModelReset);
        QAccessible::queryAccessibleInterface(&view)->tableInterface()->modelChange(&event);
    });
}

QAccessible::Role roleOf(QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->role();
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
    AppWindow app;
    LangManager::shared().setCurrent(lang);
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
    announceResets(list);
    QCOMPARE(spoken(list).size(), 2);
    app.manager.formulae.set(Samples::manyFormulae(3));
    QTRY_COMPARE(spoken(list).size(), 3);
    QVERIFY(spoken(list).constFirst().startsWith(u"package-00000, "_s));
    app.page().typeToSearch(u"00001"_s);
    QTRY_COMPARE(spoken(list).size(), 1);
    QVERIFY(spoken(list).constFirst().startsWith(u"package-00001, "_s));
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
