// SPDX-License-Identifier: MIT
#include "AlertDriver.h"
#include "AppWindow.h"
#include "Find.h"
#include "Input.h"
#include "L10n.h"
#include "Samples.h"
#include "UiTest.h"
#include "shell/SidebarView.h"
#include "widgets/SearchField.h"

#include <QApplication>
#include <QMenu>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

QStringList entriesOf(const QMenu& menu) {
    QStringList texts;
    for (const QAction* const action : menu.actions()) {
        if (!action->isSeparator())
            texts.append(action->text());
    }
    return texts;
}

/// Waits for the application's menu and returns it.
QMenu* openMenu(const AppWindow& app) {
    QMenu* const menu = app.window.applicationMenu();
    return QTest::qWaitFor([menu] { return menu->isVisible(); }) ? menu : nullptr;
}

} // namespace

/// The application's own menu, and the keys that work everywhere in its window.
class ApplicationMenuTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void listsItsEntriesInEveryLanguage_data();
    void listsItsEntriesInEveryLanguage();
    void opensByItsButtonInsideTheScreen();
    void keepsItsButtonInTheCorner();
    void waitsForTheAnswerToAnAlert();
    void namesTheKeyThatEnds();
    void hasAPlaceForEveryEntryInTheSystemsMenu();
    void asksForUpdates();
    void leadsToTheAboutPage();
    void closesTheWindow();
    void choosesACategoryByItsNumber();
    void findsByTheKeyboard_data();
    void findsByTheKeyboard();
    void refreshesByTheKeyboard_data();
    void refreshesByTheKeyboard();
    void closesByTheKeyboard_data();
    void closesByTheKeyboard();
    void doesNothingByKeysThatThePageHasNoUseFor();
};

void ApplicationMenuTest::listsItsEntriesInEveryLanguage_data() {
    QTest::addColumn<Lang>("lang");
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("ko") << Lang::ko
                        << QStringList{u"정보"_s, u"업데이트 확인..."_s, u"출력"_s, u"닫기"_s};
    QTest::newRow("en") << Lang::en
                        << QStringList{u"About"_s, u"Check for Updates..."_s, u"Output"_s,
                                       u"Close"_s};
    QTest::newRow("ja") << Lang::ja
                        << QStringList{u"情報"_s, u"アップデートを確認..."_s, u"出力"_s,
                                       u"閉じる"_s};
}

void ApplicationMenuTest::listsItsEntriesInEveryLanguage() {
    QFETCH(Lang, lang);
    QFETCH(QStringList, entries);
    const AppWindow app;
    LangManager::shared().setCurrent(lang);
    QCOMPARE(entriesOf(*app.window.applicationMenu()), entries);
}

void ApplicationMenuTest::opensByItsButtonInsideTheScreen() {
    AppWindow app;
    app.showLoaded();
    auto& button = require<QAbstractButton>(app.window, u"applicationMenuButton"_s);
    QVERIFY(app.window.content()->sidebar()->geometry().contains(button.geometry()));
    Input::click(button);
    QMenu* const menu = openMenu(app);
    QVERIFY(menu != nullptr);
    QVERIFY(menu->screen()->geometry().contains(menu->geometry()));
    menu->close();
}

void ApplicationMenuTest::keepsItsButtonInTheCorner() {
    AppWindow app;
    app.showLoaded();
    const auto& button = require<QAbstractButton>(app.window, u"applicationMenuButton"_s);
    for (const QSize size : {QSize(1000, 700), QSize(700, 450)}) {
        app.window.resize(size);
        QTRY_COMPARE(app.window.content()->size(), size);
        const QRect place(button.mapTo(&app.window, QPoint(0, 0)), button.size());
        QCOMPARE(place.bottomLeft(), QPoint(10, size.height() - 1 - 10));
    }
}

void ApplicationMenuTest::waitsForTheAnswerToAnAlert() {
    AppWindow app;
    app.showLoaded();
    Alert::ask(&app.window, {.title = u"Title"_s, .answers = {u"OK"_s}}, [](qsizetype) {});
    const AlertDriver alert;
    Input::key(Qt::Key_F10);
    QVERIFY(!app.window.applicationMenu()->isVisible());
    alert.escape();
    Input::key(Qt::Key_F10);
    QVERIFY(openMenu(app) != nullptr);
}

void ApplicationMenuTest::namesTheKeyThatEnds() {
    const AppWindow app;
    const QAction& last = *app.window.applicationMenu()->actions().constLast();
    QCOMPARE(last.menuRole(), QAction::QuitRole);
    QCOMPARE(last.shortcut(), QKeySequence(u"Ctrl+Q"_s));
}

void ApplicationMenuTest::hasAPlaceForEveryEntryInTheSystemsMenu() {
    const AppWindow app;
    for (const QAction* const action : app.window.applicationMenu()->actions()) {
        const bool hasPlace = action->menuRole() > QAction::TextHeuristicRole;
        QVERIFY2(action->isSeparator() || hasPlace, qPrintable(action->text()));
    }
}

void ApplicationMenuTest::asksForUpdates() {
    AppWindow app;
    app.showLoaded();
    const QSignalSpy asked(&app.window, &MainWindow::updateCheckRequested);
    Input::key(Qt::Key_F10);
    QMenu* const menu = openMenu(app);
    QVERIFY(menu != nullptr);
    Input::key(Qt::Key_Down);
    Input::key(Qt::Key_Down);
    Input::key(Qt::Key_Return);
    QTRY_COMPARE(asked.count(), 1);
    QVERIFY(!menu->isVisible());
}

void ApplicationMenuTest::leadsToTheAboutPage() {
    AppWindow app;
    app.showLoaded();
    Input::key(Qt::Key_F10);
    QMenu* const menu = openMenu(app);
    QVERIFY(menu != nullptr);
    Input::click(*menu, menu->actionGeometry(menu->actions().constFirst()).center());
    QTRY_COMPARE(app.page().title(), u"About"_s);
    QCOMPARE(app.sidebar().selected(), u"About"_s);
}

void ApplicationMenuTest::closesTheWindow() {
    AppWindow app;
    app.showLoaded();
    app.window.applicationMenu()->actions().constLast()->trigger();
    QTRY_VERIFY(!app.window.isVisible());
}

void ApplicationMenuTest::choosesACategoryByItsNumber() {
    AppWindow app;
    app.showLoaded();
    for (const SidebarCategory category :
         {SidebarCategory::about, SidebarCategory::casks, SidebarCategory::updates,
          SidebarCategory::search, SidebarCategory::taps, SidebarCategory::settings,
          SidebarCategory::formulae}) {
        Input::key(static_cast<Qt::Key>(Qt::Key_1 + static_cast<int>(category)),
                   Qt::ControlModifier);
        QCOMPARE(app.window.content()->selectedCategory(), category);
        QCOMPARE(app.sidebar().selected(), localizedName(category));
    }
}

void ApplicationMenuTest::findsByTheKeyboard_data() {
    QTest::addColumn<SidebarCategory>("category");
    for (const SidebarCategory category :
         {SidebarCategory::formulae, SidebarCategory::casks, SidebarCategory::search})
        QTest::newRow(qUtf8Printable(rawValue(category))) << category;
}

void ApplicationMenuTest::findsByTheKeyboard() {
    QFETCH(SidebarCategory, category);
    AppWindow app;
    app.brew.setFormulae({Samples::formula(u"wget"_s)});
    app.brew.setCasks({Samples::cask(u"iina"_s)});
    app.showLoaded();
    app.choose(category);
    Input::key(Qt::Key_F, Qt::ControlModifier);
    SearchField& field = app.page().searchField();
    QVERIFY(field.hasFocus());
    Input::type(u"abc"_s);
    QCOMPARE(field.text(), u"abc"_s);
    // A second time it replaces what is there.
    Input::key(Qt::Key_F, Qt::ControlModifier);
    Input::type(u"d"_s);
    QCOMPARE(field.text(), u"d"_s);
    Input::key(Qt::Key_Escape);
    QCOMPARE(field.text(), QString());
}

void ApplicationMenuTest::refreshesByTheKeyboard_data() {
    QTest::addColumn<SidebarCategory>("category");
    QTest::addColumn<QString>("run");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("isControl");
    using enum SidebarCategory;
    QTest::newRow("formulae") << formulae << ScriptedBrew::infoFormulae << Qt::Key_R << true;
    QTest::newRow("formulae, F5") << formulae << ScriptedBrew::infoFormulae << Qt::Key_F5 << false;
    QTest::newRow("casks") << casks << ScriptedBrew::infoCasks << Qt::Key_R << true;
    QTest::newRow("updates") << updates << ScriptedBrew::outdated << Qt::Key_F5 << false;
    QTest::newRow("taps") << taps << ScriptedBrew::tap << Qt::Key_R << true;
}

void ApplicationMenuTest::refreshesByTheKeyboard() {
    QFETCH(SidebarCategory, category);
    QFETCH(QString, run);
    QFETCH(Qt::Key, key);
    QFETCH(bool, isControl);
    AppWindow app;
    // So that showing a page loads nothing.
    app.brew.setOutdated({Samples::outdatedCask(u"iina"_s)});
    app.brew.setTaps({u"a/b"_s});
    app.showLoaded();
    app.choose(category);
    (void)app.brew.newRuns();
    app.brew.hold(run);
    const Qt::KeyboardModifiers modifiers = isControl ? Qt::ControlModifier : Qt::NoModifier;
    Input::key(key, modifiers);
    QTRY_VERIFY(!app.page().button(u"refreshButton"_s).isEnabled());
    // What is being loaded isn't loaded again.
    Input::key(key, modifiers);
    app.brew.release(run);
    app.waitUntilLoaded();
    QCOMPARE(app.brew.newRuns(), QStringList{run});
}

void ApplicationMenuTest::closesByTheKeyboard_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("quit") << Qt::Key_Q;
    QTest::newRow("close") << Qt::Key_W;
}

void ApplicationMenuTest::closesByTheKeyboard() {
    QFETCH(Qt::Key, key);
    AppWindow app;
    app.showLoaded();
    Input::key(key, Qt::ControlModifier);
    QTRY_VERIFY(!app.window.isVisible());
}

void ApplicationMenuTest::doesNothingByKeysThatThePageHasNoUseFor() {
    AppWindow app;
    app.showLoaded();
    (void)app.brew.newRuns();
    for (const SidebarCategory category : {SidebarCategory::about, SidebarCategory::settings}) {
        app.choose(category);
        const QWidget* const focused = QApplication::focusWidget();
        Input::key(Qt::Key_F, Qt::ControlModifier);
        Input::key(Qt::Key_R, Qt::ControlModifier);
        Input::key(Qt::Key_F5);
        QCOMPARE(QApplication::focusWidget(), focused);
        QCOMPARE(app.brew.newRuns(), QStringList());
    }
}

LUMORA_UI_TEST_MAIN(ApplicationMenuTest)
#include "tst_applicationmenu.moc"
