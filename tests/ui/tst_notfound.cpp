// SPDX-License-Identifier: MIT
#include "Addresses.h"
#include "BrewAt.h"
#include "BrewManager.h"
#include "BrowserDouble.h"
#include "Find.h"
#include "Focus.h"
#include "Input.h"
#include "LangManager.h"
#include "ScriptedBrew.h"
#include "UiTest.h"
#include "pages/BrewNotFoundView.h"
#include "shell/ContentView.h"
#include "shell/DetailColumn.h"
#include "shell/MainWindow.h"
#include "shell/SidebarView.h"
#include "widgets/SymbolLabel.h"

#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

/// The application's window where there is no Homebrew.
struct NotFoundWindow final {
    NotFoundWindow() {
        LangManager::shared().setCurrent(Lang::en);
        window.show();
        if (!QTest::qWaitForWindowActive(&window))
            qFatal("The window doesn't become active");
    }

    [[nodiscard]] BrewNotFoundView& view() const { return require<BrewNotFoundView>(window); }

    [[nodiscard]] QPushButton& button() const {
        return require<QPushButton>(window, u"installHomebrewButton"_s);
    }

    BrewManager manager{brewAt(u"/nonexistent/brew"_s)};
    MainWindow window{manager, LangManager::shared(), {}};
};

QRect inWindow(const QWidget& widget) {
    return {widget.mapTo(widget.window(), QPoint(0, 0)), widget.size()};
}

} // namespace

/// The gate: without Homebrew there is one page and nothing else.
class NotFoundTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsNothingElse();
    void runsNothing();
    void refreshesNothingAtTheStart();
    void opensHomebrewsPageAsOftenAsItIsPressed();
    void standsInTheMiddle();
    void hasItsDistances();
    void speaksTheLanguage_data();
    void speaksTheLanguage();
    void letsUpdatesBeCheckedFor();
    void ignoresTheKeysOfPagesThatAreNotThere();
    void closesByTheKeyboard();
};

void NotFoundTest::showsNothingElse() {
    const NotFoundWindow notFound;
    QVERIFY(!*notFound.manager.brewAvailable);
    QVERIFY(notFound.view().isVisible());
    QVERIFY(notFound.window.findChildren<SidebarView*>().isEmpty());
    QVERIFY(notFound.window.findChildren<PageHeader*>().isEmpty());
    QCOMPARE(notFound.window.content()->detailColumn(), nullptr);
    QCOMPARE(notFound.window.size(), QSize(900, 600));
    QCOMPARE(notFound.view().size(), QSize(900, 600));
    const auto& symbol = require<SymbolLabel>(notFound.window);
    QCOMPARE(symbol.symbol(), u"exclamationmark.triangle"_s);
}

void NotFoundTest::runsNothing() {
    NotFoundWindow notFound;
    const QSignalSpy changes(&notFound.manager, &BrewManager::objectWillChange);
    notFound.window.hide();
    notFound.window.show();
    LangManager::shared().setCurrent(Lang::ja);
    QTRY_COMPARE(notFound.button().text(), u"Homebrewをインストール"_s);
    QCOMPARE(changes.count(), 0);
}

void NotFoundTest::refreshesNothingAtTheStart() {
    // A brew that would answer, so that a refresh could be seen.
    const ScriptedBrew brew;
    BrewManager manager(brew.discovery());
    manager.brewAvailable.set(false);
    MainWindow window(manager, LangManager::shared(), {});
    const QSignalSpy changes(&manager, &BrewManager::objectWillChange);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QCOMPARE(changes.count(), 0);
    QCOMPARE(brew.runs(), QStringList());
}

void NotFoundTest::opensHomebrewsPageAsOftenAsItIsPressed() {
    const BrowserDouble browser;
    const NotFoundWindow notFound;
    const QImage before = notFound.view().grab().toImage();
    for (int i = 1; i <= 3; ++i) {
        Input::click(notFound.button());
        QCOMPARE(browser.opened(), QStringList(i, Addresses::homebrew));
    }
    Input::moveTo(notFound.window, QPoint(1, 1));
    notFound.button().clearFocus();
    QCOMPARE(notFound.view().grab().toImage(), before);
    QVERIFY(Focus::tabTo(u"installHomebrewButton"_s));
    Input::key(Qt::Key_Space);
    QCOMPARE(browser.opened().size(), 4);
}

void NotFoundTest::standsInTheMiddle() {
    NotFoundWindow notFound;
    for (const QSize size : {QSize(900, 600), QSize(700, 450)}) {
        notFound.window.resize(size);
        QTRY_COMPARE(notFound.view().size(), size);
        const QRect content = inWindow(require<SymbolLabel>(notFound.window))
                                  .united(inWindow(notFound.button()))
                                  .united(inWindow(require<QLabel>(notFound.window)));
        const QPoint distance = content.center() - notFound.view().rect().center();
        QVERIFY(qAbs(distance.x()) <= 1 && qAbs(distance.y()) <= 1);
        QVERIFY(notFound.view().rect().adjusted(40, 40, -40, -40).contains(content));
    }
}

void NotFoundTest::hasItsDistances() {
    const NotFoundWindow notFound;
    QList<QRect> items{inWindow(require<SymbolLabel>(notFound.window))};
    for (const QLabel* const label : notFound.view().findChildren<QLabel*>())
        items.append(inWindow(*label));
    items.append(inWindow(notFound.button()));
    QCOMPARE(items.size(), 4);
    for (qsizetype i = 1; i < items.size(); ++i)
        QCOMPARE(items.at(i).top(), items.at(i - 1).bottom() + 1 + 20);
    // Large and filled with the accent.
    QVERIFY(notFound.button().height() > 30);
}

void NotFoundTest::speaksTheLanguage_data() {
    QTest::addColumn<Lang>("lang");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QString>("button");
    QTest::newRow("ko")
        << Lang::ko
        << QStringList{u"Homebrew를 찾을 수 없음"_s,
                       u"Lumora은 Homebrew가 설치되어 있어야 합니다.\n먼저 Homebrew를 설치하세요."_s}
        << u"Homebrew 설치"_s;
    QTest::newRow("en")
        << Lang::en
        << QStringList{u"Homebrew Not Found"_s,
                       u"Lumora requires Homebrew to be installed.\nPlease install Homebrew first."_s}
        << u"Install Homebrew"_s;
    QTest::newRow("ja")
        << Lang::ja
        << QStringList{u"Homebrewが見つかりません"_s,
                       u"Lumoraを使用するにはHomebrewが必要です。\n先にHomebrewをインストールしてください。"_s}
        << u"Homebrewをインストール"_s;
}

void NotFoundTest::speaksTheLanguage() {
    QFETCH(Lang, lang);
    QFETCH(QStringList, texts);
    QFETCH(QString, button);
    const NotFoundWindow notFound;
    LangManager::shared().setCurrent(lang);
    QTRY_COMPARE(notFound.button().text(), button);
    QStringList shown;
    for (const QLabel* const label : notFound.view().findChildren<QLabel*>())
        shown.append(label->text());
    QCOMPARE(shown, texts);
}

void NotFoundTest::letsUpdatesBeCheckedFor() {
    const NotFoundWindow notFound;
    const QSignalSpy asked(&notFound.window, &MainWindow::updateCheckRequested);
    Input::key(Qt::Key_F10);
    QMenu* const menu = notFound.window.applicationMenu();
    QTRY_VERIFY(menu->isVisible());
    // There is no About page to lead to.
    QVERIFY(!menu->actions().constFirst()->isEnabled());
    QAction* const check = menu->findChild<QAction*>(u"checkForUpdatesAction"_s);
    QVERIFY(check != nullptr && check->isEnabled());
    Input::click(*menu, menu->actionGeometry(check).center());
    QTRY_COMPARE(asked.count(), 1);
}

void NotFoundTest::ignoresTheKeysOfPagesThatAreNotThere() {
    const NotFoundWindow notFound;
    const QSignalSpy changes(&notFound.manager, &BrewManager::objectWillChange);
    for (int number = 0; number < 7; ++number)
        Input::key(static_cast<Qt::Key>(Qt::Key_1 + number), Qt::ControlModifier);
    for (const Qt::Key key : {Qt::Key_F, Qt::Key_R})
        Input::key(key, Qt::ControlModifier);
    Input::key(Qt::Key_F5);
    Input::key(Qt::Key_Escape);
    QVERIFY(notFound.view().isVisible());
    QCOMPARE(changes.count(), 0);
}

void NotFoundTest::closesByTheKeyboard() {
    const NotFoundWindow notFound;
    Input::key(Qt::Key_Q, Qt::ControlModifier);
    QTRY_VERIFY(!notFound.window.isVisible());
}

LUMORA_UI_TEST_MAIN(NotFoundTest)
#include "tst_notfound.moc"
