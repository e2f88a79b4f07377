// SPDX-License-Identifier: MIT
#include "AlertDriver.h"
#include "Input.h"
#include "LangManager.h"
#include "PackageListCase.h"
#include "UiTest.h"
#include "widgets/RowListView.h"

#include <QMenu>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

/// Uninstalling from the lists of installed packages.
class UninstallTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void asksFirst_data();
    void asksFirst();
    void asksInEveryLanguage_data();
    void asksInEveryLanguage();
    void runsNothingWhenCancelled_data();
    void runsNothingWhenCancelled();
    void uninstallsAndLoadsTheListAgain_data();
    void uninstallsAndLoadsTheListAgain();
    void loadsNothingAfterAFailure_data();
    void loadsNothingAfterAFailure();
    void asksFromTheKeyboardAndTheMenu_data();
    void asksFromTheKeyboardAndTheMenu();
    void asksOneQuestionAtATime();
    void asksAboutTheRowThatIsShown();
};

void UninstallTest::asksFirst_data() {
    PackageListCase::addRows();
}

void UninstallTest::asksFirst() {
    QFETCH(PackageType, type);
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    list.publish(window.manager, {list.package(u"jq"_s), list.package(u"wget"_s)});
    list.show(window);
    window.page().list().clickAction(list.id(u"wget"_s));
    const AlertDriver alert;
    QCOMPARE(alert.title(), list.alertTitle);
    QCOMPARE(alert.message(), u"Are you sure you want to uninstall wget?"_s);
    QStringList buttons = alert.buttons();
    buttons.sort();
    QCOMPARE(buttons, (QStringList{u"Cancel"_s, u"Uninstall"_s}));
    // Return must not destroy anything.
    QCOMPARE(alert.defaultButton(), u"Cancel"_s);
    QCOMPARE(window.selection.selectedPackageID(), std::nullopt);
    QCOMPARE(window.brew.runs(), QStringList());
}

void UninstallTest::asksInEveryLanguage_data() {
    QTest::addColumn<PackageType>("type");
    QTest::addColumn<Lang>("lang");
    QTest::addColumn<QStringList>("texts");
    using enum PackageType;
    QTest::newRow("formula ko") << formula << Lang::ko
                                << QStringList{u"패키지 삭제"_s, u"wget을(를) 삭제하시겠습니까?"_s,
                                               u"삭제"_s, u"취소"_s};
    QTest::newRow("cask ko") << cask << Lang::ko
                             << QStringList{u"Cask 삭제"_s, u"wget을(를) 삭제하시겠습니까?"_s,
                                            u"삭제"_s, u"취소"_s};
    QTest::newRow("formula ja") << formula << Lang::ja
                                << QStringList{u"パッケージをアンインストール"_s,
                                               u"wgetをアンインストールしますか？"_s,
                                               u"アンインストール"_s, u"キャンセル"_s};
    QTest::newRow("cask ja") << cask << Lang::ja
                             << QStringList{u"Caskをアンインストール"_s,
                                            u"wgetをアンインストールしますか？"_s,
                                            u"アンインストール"_s, u"キャンセル"_s};
}

void UninstallTest::asksInEveryLanguage() {
    QFETCH(PackageType, type);
    QFETCH(Lang, lang);
    QFETCH(QStringList, texts);
    LangManager::shared().setCurrent(lang);
    const auto restore = qScopeGuard([] { LangManager::shared().setCurrent(Lang::en); });
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    list.publish(window.manager, {list.package(u"wget"_s)});
    list.show(window);
    window.page().list().clickAction(list.id(u"wget"_s));
    const AlertDriver alert;
    QCOMPARE(alert.title(), texts.at(0));
    QCOMPARE(alert.message(), texts.at(1));
    QVERIFY(alert.buttons().contains(texts.at(2)));
    QVERIFY(alert.buttons().contains(texts.at(3)));
}

void UninstallTest::runsNothingWhenCancelled_data() {
    QTest::addColumn<std::function<void(const AlertDriver&)>>("cancel");
    const auto add = [](const char* name, const std::function<void(const AlertDriver&)>& cancel) {
        QTest::newRow(name) << cancel;
    };
    add("by its button", [](const AlertDriver& alert) { alert.press(u"Cancel"_s); });
    add("by Escape", [](const AlertDriver& alert) { alert.escape(); });
    add("by Return", [](const AlertDriver&) { Input::key(Qt::Key_Return); });
}

void UninstallTest::runsNothingWhenCancelled() {
    QFETCH(std::function<void(const AlertDriver&)>, cancel);
    const PackageListCase& list = PackageListCase::of(PackageType::formula);
    PageWindow window;
    list.publish(window.manager, {list.package(u"wget"_s)});
    list.show(window);
    // The question can be asked again each time.
    for (int i = 0; i < 2; ++i) {
        window.page().list().clickAction(u"formula-wget"_s);
        cancel(AlertDriver());
        QTRY_VERIFY(!AlertDriver::isOpen());
        QVERIFY(!*window.manager.isRunningOperation);
        QCOMPARE(*window.manager.operationOutput, QString());
    }
    // A run that follows is the first one.
    window.page().press(u"refreshButton"_s);
    QTRY_COMPARE(window.brew.runs(), QStringList{list.load});
}

void UninstallTest::uninstallsAndLoadsTheListAgain_data() {
    PackageListCase::addRows();
}

void UninstallTest::uninstallsAndLoadsTheListAgain() {
    QFETCH(PackageType, type);
    const PackageListCase& list = PackageListCase::of(type);
    const PackageListCase& other =
        PackageListCase::of(type == PackageType::cask ? PackageType::formula : PackageType::cask);
    PageWindow window;
    // A package of the other type may have the same name.
    list.publish(window.manager, {list.package(u"jq"_s), list.package(u"wget"_s)});
    other.publish(window.manager, {other.package(u"wget"_s)});
    list.setInstalled(window.brew, {list.package(u"jq"_s)});
    list.show(window);
    const QString uninstall = list.uninstall + u" wget"_s;
    window.brew.hold(uninstall);
    window.page().list().clickAction(list.id(u"wget"_s));
    AlertDriver().press(u"Uninstall"_s);
    QTRY_COMPARE(window.brew.runs(), QStringList{uninstall});
    QVERIFY(*window.manager.isRunningOperation);
    QCOMPARE(*window.manager.operationOutput, u"Uninstalling wget...\n"_s);
    // Nothing is removed from the list before it is loaded again.
    QCOMPARE(window.page().list().ids().size(), 2);

    window.brew.release(uninstall);
    QTRY_COMPARE(window.page().list().ids(), QStringList{list.id(u"jq"_s)});
    QCOMPARE(window.brew.runs(), (QStringList{uninstall, list.load}));
}

void UninstallTest::loadsNothingAfterAFailure_data() {
    PackageListCase::addRows();
}

void UninstallTest::loadsNothingAfterAFailure() {
    QFETCH(PackageType, type);
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    list.publish(window.manager, {list.package(u"wget"_s)});
    list.show(window);
    const QString uninstall = list.uninstall + u" wget"_s;
    window.brew.fail(uninstall);
    window.page().list().clickAction(list.id(u"wget"_s));
    AlertDriver().press(u"Uninstall"_s);
    QTRY_VERIFY(window.manager.operationOutput->endsWith(u"Failed to uninstall wget"_s));
    QVERIFY(!*window.manager.isLoadingFormulae && !*window.manager.isLoadingCasks);
    QCOMPARE(window.page().list().ids(), QStringList{list.id(u"wget"_s)});
    QCOMPARE(window.brew.runs(), QStringList{uninstall});
}

void UninstallTest::asksFromTheKeyboardAndTheMenu_data() {
    QTest::addColumn<std::function<void(const PageWindow&)>>("ask");
    const auto add = [](const char* name, const std::function<void(const PageWindow&)>& ask) {
        QTest::newRow(name) << ask;
    };
    add("Delete", [](const PageWindow&) { Input::key(Qt::Key_Delete); });
    add("Right, Return", [](const PageWindow&) {
        Input::key(Qt::Key_Right);
        Input::key(Qt::Key_Return);
    });
    add("Right, Space", [](const PageWindow&) {
        Input::key(Qt::Key_Right);
        Input::key(Qt::Key_Space);
    });
    add("menu", [](const PageWindow& window) {
        const QMenu& menu = window.page().list().openMenu(u"formula-wget"_s);
        Input::click(menu, menu.actionGeometry(menu.actions().constLast()).center());
    });
}

void UninstallTest::asksFromTheKeyboardAndTheMenu() {
    QFETCH(std::function<void(const PageWindow&)>, ask);
    const PackageListCase& list = PackageListCase::of(PackageType::formula);
    PageWindow window;
    list.publish(window.manager, {list.package(u"jq"_s), list.package(u"wget"_s)});
    list.show(window);
    window.page().list().view().setFocus();
    Input::key(Qt::Key_Down);
    QCOMPARE(window.page().list().currentId(), u"formula-wget"_s);
    ask(window);
    const AlertDriver alert;
    QCOMPARE(alert.message(), u"Are you sure you want to uninstall wget?"_s);
    alert.escape();
    QCOMPARE(window.selection.selectedPackageID(), std::nullopt);
}

void UninstallTest::asksOneQuestionAtATime() {
    const PackageListCase& list = PackageListCase::of(PackageType::formula);
    PageWindow window;
    list.publish(window.manager, {list.package(u"jq"_s), list.package(u"wget"_s)});
    list.show(window);
    window.page().list().clickAction(u"formula-wget"_s);
    const AlertDriver alert;
    // The alert keeps the page out of reach.
    window.page().list().clickAction(u"formula-jq"_s);
    QCOMPARE(alert.message(), u"Are you sure you want to uninstall wget?"_s);
    alert.escape();
    QVERIFY(!AlertDriver::isOpen());
}

void UninstallTest::asksAboutTheRowThatIsShown() {
    const PackageListCase& list = PackageListCase::of(PackageType::formula);
    PageWindow window;
    list.publish(window.manager, {list.package(u"jq"_s), list.package(u"wget"_s)});
    list.show(window);
    window.page().typeToSearch(u"wget"_s);
    QTRY_COMPARE(window.page().title(), u"Formulae (1)"_s);
    window.page().list().clickAction(u"formula-wget"_s);
    const AlertDriver alert;
    // The list may change behind the question.
    list.publish(window.manager, {list.package(u"wget"_s), list.package(u"wget2"_s)});
    alert.press(u"Uninstall"_s);
    QTRY_COMPARE(window.brew.runs().value(0), u"uninstall wget"_s);
}

LUMORA_UI_TEST_MAIN(UninstallTest)
#include "tst_uninstall.moc"
