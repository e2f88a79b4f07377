// SPDX-License-Identifier: MIT
#include "AlertDriver.h"
#include "AppWindow.h"
#include "BrowserDouble.h"
#include "Find.h"
#include "Focus.h"
#include "Input.h"
#include "Samples.h"
#include "SheetDriver.h"
#include "UiTest.h"
#include "style/LumoraStyle.h"
#include "widgets/OutputText.h"
#include "widgets/PushButton.h"
#include "widgets/RowListView.h"
#include "widgets/SearchField.h"
#include "widgets/Sheet.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QProxyStyle>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSet>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

using enum SidebarCategory;

namespace {

/// What macOS's style has for buttons while its keyboard navigation is off.
class FieldsOnlyStyle final : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override {
        return hint == SH_Button_FocusPolicy
                   ? Qt::TabFocus
                   : QProxyStyle::styleHint(hint, option, widget, returned);
    }
};

/// The application with something on every page, driven by Tab, arrows, Return, Space, Escape
/// and Delete alone.
struct KeyboardApp final {
    KeyboardApp() {
        app.brew.setFormulae({Samples::formula(u"jq"_s), Samples::formula(u"wget"_s)});
        app.brew.setCasks({Samples::cask(u"iina"_s)});
        app.brew.setOutdated(
            {Samples::outdatedFormula(u"jq"_s), Samples::outdatedFormula(u"wget"_s)});
        app.brew.setTaps({u"a/b"_s, u"c/d"_s});
        app.showLoaded();
        (void)app.brew.newRuns();
    }

    /// Goes to the sidebar and from there to the category.
    void choose(SidebarCategory category) const {
        QVERIFY(Focus::tabTo(u"sidebar"_s));
        const auto current = [this] { return *app.window.content()->selectedCategory(); };
        for (int i = 0; i < 7 && current() != category; ++i)
            Input::key(current() < category ? Qt::Key_Down : Qt::Key_Up);
        QCOMPARE(current(), category);
        QCoreApplication::processEvents();
    }

    /// Goes to the list and in it to the row.
    void goTo(const QString& id) const {
        QVERIFY(Focus::tabTo(u"rowList"_s));
        Input::key(Qt::Key_Home);
        for (int i = 0; i < 10 && app.page().list().currentId() != id; ++i)
            Input::key(Qt::Key_Down);
        QCOMPARE(app.page().list().currentId(), id);
    }

    AppWindow app;
};

/// Answers the alert that is open with this button.
void answer(const QString& text) {
    const AlertDriver alert;
    QVERIFY(Focus::tabTo([&](const QWidget& widget) {
        const auto* const button = qobject_cast<const QPushButton*>(&widget);
        return button != nullptr && button->text() == text;
    }));
    Input::key(Qt::Key_Space);
    QTRY_VERIFY(!AlertDriver::isOpen());
}

} // namespace

class KeyboardTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reachesEverythingOnAPage_data();
    void reachesEverythingOnAPage();
    void goesRoundInReadingOrder();
    void goesRoundInReadingOrderWhateverCameWhen();
    void showsWhereItIs_data();
    void showsWhereItIs();
    void leavesNoMarkToTheMouse();
    void leavesNoMarkBehindAButtonOrASheet();
    void staysOnAButtonThatIsTurnedOff_data();
    void staysOnAButtonThatIsTurnedOff();
    void leavesAButtonThatIsTurnedOff();
    void beginsASearchInItsField_data();
    void beginsASearchInItsField();
    void passesTheSearchInTheSidebar();
    void goesToTheSidebarFromAPageThatGoes();
    void goesFromTheFieldToTheListAndBack();
    void reachesButtonsInEveryStyle();
    void pressesButtonsAndLinksByReturn_data();
    void pressesButtonsAndLinksByReturn();
    void opensAndClosesADetail();
    void scrollsADetail();
    void filters();
    void installs();
    void upgradesOne();
    void upgradesAll();
    void uninstalls();
    void addsATap();
    void addsATapByTheDefaultKey();
    void correctsATap();
    void keepsWhatIsTypedInASheet();
    void removesATap();
    void cleansUp();
    void runsTheDoctor();
    void changesTheLanguage();
    void closesAFailure();
};

void KeyboardTest::reachesEverythingOnAPage_data() {
    QTest::addColumn<SidebarCategory>("category");
    for (const SidebarCategory category : allSidebarCategories)
        QTest::newRow(qUtf8Printable(rawValue(category))) << category;
}

void KeyboardTest::reachesEverythingOnAPage() {
    QFETCH(SidebarCategory, category);
    const KeyboardApp keyboard;
    keyboard.choose(category);
    const QList<QWidget*> stops = Focus::stopsIn(keyboard.app.window);
    QVERIFY(stops.size() > 1);
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        QSet<QWidget*> reached;
        for (qsizetype i = 0; i < 2 * stops.size(); ++i) {
            Input::key(key);
            reached.insert(QApplication::focusWidget());
        }
        for (QWidget* const stop : stops)
            QVERIFY2(reached.contains(stop), qPrintable(stop->objectName()));
    }
}

void KeyboardTest::goesRoundInReadingOrder() {
    const KeyboardApp keyboard;
    QVERIFY(Focus::tabTo(u"sidebar"_s));
    QStringList order;
    for (int i = 0; i < 5; ++i) {
        order.append(QApplication::focusWidget()->objectName());
        Input::key(Qt::Key_Tab);
    }
    QCOMPARE(order, (QStringList{u"sidebar"_s, u"searchField"_s, u"refreshButton"_s, u"rowList"_s,
                                 u"applicationMenuButton"_s}));
    QCOMPARE(QApplication::focusWidget()->objectName(), u"sidebar"_s);
}

void KeyboardTest::goesRoundInReadingOrderWhateverCameWhen() {
    KeyboardApp keyboard;
    const auto round = [] {
        QStringList names;
        if (Focus::tabTo(u"sidebar"_s)) {
            do {
                names.append(QApplication::focusWidget()->objectName());
                Input::key(Qt::Key_Tab);
            } while (names.size() < 20 &&
                     names.constFirst() != QApplication::focusWidget()->objectName());
        }
        return names;
    };
    keyboard.app.choose(taps);
    QCOMPARE(round(), (QStringList{u"sidebar"_s, u"refreshButton"_s, u"addTapButton"_s,
                                   u"rowList"_s, u"applicationMenuButton"_s}));
    keyboard.app.choose(updates);
    QCOMPARE(round(), (QStringList{u"sidebar"_s, u"updateAllButton"_s, u"refreshButton"_s,
                                   u"rowList"_s, u"applicationMenuButton"_s}));
    // In another language all widgets are others, and strips come when they will.
    LangManager::shared().setCurrent(Lang::ja);
    QTRY_COMPARE(keyboard.app.page().title(), u"アップデート (2)"_s);
    keyboard.app.manager.errorMessage.set(u"Something failed"_s);
    Q_EMIT keyboard.app.manager.operationEnded({.succeeded = false,
                                                .start = u"Upgrading wget..."_s,
                                                .closing = u"Failed to upgrade wget"_s,
                                                .transcript = u"Error: no\n"_s});
    QTRY_VERIFY(findVisible(keyboard.app.window, u"operationStrip"_s) != nullptr);
    const QStringList withStrips{u"operationOutput"_s, u"closeOperation"_s, u"closeFailure"_s,
                                 u"rowList"_s, u"applicationMenuButton"_s};
    QCOMPARE(round(),
             (QStringList{u"sidebar"_s, u"updateAllButton"_s, u"refreshButton"_s} + withStrips));
    keyboard.app.choose(casks);
    QCOMPARE(round(),
             (QStringList{u"sidebar"_s, u"searchField"_s, u"refreshButton"_s} + withStrips));
    LangManager::shared().setCurrent(Lang::en);
}

void KeyboardTest::showsWhereItIs_data() {
    QTest::addColumn<SidebarCategory>("category");
    for (const SidebarCategory category : allSidebarCategories)
        QTest::newRow(qUtf8Printable(rawValue(category))) << category;
}

void KeyboardTest::showsWhereItIs() {
    QFETCH(SidebarCategory, category);
    const KeyboardApp keyboard;
    keyboard.choose(category);
    const auto grab = [&](const QWidget* widget) {
        const QRect area(widget->mapTo(&keyboard.app.window, QPoint(0, 0)), widget->size());
        return const_cast<MainWindow&>(keyboard.app.window).grab(area).toImage();
    };
    for (qsizetype i = 0; i < Focus::stopsIn(keyboard.app.window).size(); ++i) {
        Input::key(Qt::Key_Tab);
        QWidget* const focused = QApplication::focusWidget();
        const QImage with = grab(focused);
        Input::key(Qt::Key_Tab);
        const QImage without = grab(focused);
        QVERIFY2(with != without, qPrintable(focused->objectName()));
        Input::key(Qt::Key_Backtab);
    }
}

void KeyboardTest::leavesNoMarkToTheMouse() {
    const KeyboardApp keyboard;
    QListView& sidebar = keyboard.app.sidebar().view();
    keyboard.app.sidebar().click(casks);
    const QImage clicked = sidebar.grab().toImage();
    Input::key(Qt::Key_Tab);
    Input::key(Qt::Key_Backtab);
    QVERIFY(sidebar.hasFocus());
    QVERIFY(sidebar.grab().toImage() != clicked);
    keyboard.app.sidebar().click(casks);
    QVERIFY(sidebar.hasFocus());
    QCOMPARE(sidebar.grab().toImage(), clicked);
}

void KeyboardTest::leavesNoMarkBehindAButtonOrASheet() {
    KeyboardApp keyboard;
    const ListDriver list = keyboard.app.page().list();
    keyboard.app.brew.hold(ScriptedBrew::infoFormulae);
    keyboard.goTo(u"formula-jq"_s);
    QVERIFY(list.state(u"formula-jq"_s).isCurrent);
    // The button is turned off by the press.
    keyboard.app.page().press(u"refreshButton"_s);
    QTRY_VERIFY(!keyboard.app.page().button(u"refreshButton"_s).isEnabled());
    QVERIFY(!list.state(u"formula-jq"_s).isCurrent);
    keyboard.app.brew.release(ScriptedBrew::infoFormulae);
    QTRY_VERIFY(keyboard.app.page().button(u"refreshButton"_s).isEnabled());
    QVERIFY(!list.state(u"formula-jq"_s).isCurrent);

    list.click(u"formula-wget"_s);
    SheetDriver(keyboard.app.window).press(u"closeDetail"_s);
    QTRY_VERIFY(!SheetDriver::isOpen(keyboard.app.window));
    QVERIFY(list.view().hasFocus());
    QVERIFY(!list.state(u"formula-wget"_s).isCurrent);
    Input::key(Qt::Key_Shift);
    QVERIFY(!list.state(u"formula-wget"_s).isCurrent);
    // The next key shows where it has come to.
    Input::key(Qt::Key_Up);
    QVERIFY(list.state(u"formula-jq"_s).isCurrent);
}

void KeyboardTest::staysOnAButtonThatIsTurnedOff_data() {
    QTest::addColumn<SidebarCategory>("category");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("run");
    QTest::newRow("formulae") << formulae << u"refreshButton"_s << ScriptedBrew::infoFormulae;
    QTest::newRow("casks") << casks << u"refreshButton"_s << ScriptedBrew::infoCasks;
    QTest::newRow("updates") << updates << u"refreshButton"_s << ScriptedBrew::outdated;
    QTest::newRow("update all") << updates << u"updateAllButton"_s << u"upgrade"_s;
    QTest::newRow("taps") << taps << u"refreshButton"_s << ScriptedBrew::tap;
    QTest::newRow("preview") << settings << u"previewButton"_s << u"cleanup -n"_s;
    QTest::newRow("doctor") << settings << u"doctorButton"_s << u"doctor"_s;
}

void KeyboardTest::staysOnAButtonThatIsTurnedOff() {
    QFETCH(SidebarCategory, category);
    QFETCH(QString, button);
    QFETCH(QString, run);
    KeyboardApp keyboard;
    keyboard.choose(category);
    QVERIFY(Focus::tabTo(button));
    QAbstractButton& pressed = keyboard.app.page().button(button);
    keyboard.app.brew.hold(run);
    const qsizetype before = keyboard.app.brew.runs().size();
    Input::key(Qt::Key_Space);
    QTRY_VERIFY(!pressed.isEnabled());
    QTRY_COMPARE(keyboard.app.brew.runs().value(before), run);
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
        QVERIFY(pressed.hasFocus());
        Input::key(key);
    }
    QCoreApplication::processEvents();
    QVERIFY(!SheetDriver::isOpen(keyboard.app.window));
    QVERIFY(!AlertDriver::isOpen());
    keyboard.app.brew.release(run);
    QTRY_VERIFY(pressed.isEnabled());
    QVERIFY(pressed.hasFocus());
    keyboard.app.waitUntilLoaded();
    const qsizetype after = keyboard.app.brew.runs().size();
    Input::key(Qt::Key_Space);
    QTRY_COMPARE(keyboard.app.brew.runs().value(after), run);
    QTRY_VERIFY(pressed.isEnabled());
}

void KeyboardTest::leavesAButtonThatIsTurnedOff() {
    KeyboardApp keyboard;
    QVERIFY(Focus::tabTo(u"refreshButton"_s));
    QAbstractButton& refresh = keyboard.app.page().button(u"refreshButton"_s);
    keyboard.app.brew.hold(ScriptedBrew::infoFormulae);
    Input::key(Qt::Key_Space);
    QTRY_VERIFY(!refresh.isEnabled());
    Input::key(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"rowList"_s);
    keyboard.app.brew.release(ScriptedBrew::infoFormulae);
    QTRY_VERIFY(refresh.isEnabled());
    QCOMPARE(QApplication::focusWidget()->objectName(), u"rowList"_s);
    // One that goes altogether can't keep it.
    keyboard.choose(updates);
    QVERIFY(Focus::tabTo(u"updateAllButton"_s));
    keyboard.app.brew.setOutdated({});
    Input::key(Qt::Key_Space);
    QTRY_VERIFY(!keyboard.app.page().hasButton(u"updateAllButton"_s));
    QCOMPARE(QApplication::focusWidget()->objectName(), u"refreshButton"_s);
}

void KeyboardTest::beginsASearchInItsField_data() {
    QTest::addColumn<std::function<void(const KeyboardApp&)>>("go");
    const auto add = [](const char* name, std::function<void(const KeyboardApp&)> go) {
        QTest::newRow(name) << std::move(go);
    };
    add("by number", [](const KeyboardApp&) { Input::key(Qt::Key_4, Qt::ControlModifier); });
    add("by click", [](const KeyboardApp& keyboard) { keyboard.app.sidebar().click(search); });
    add("by number from a detail", [](const KeyboardApp& keyboard) {
        keyboard.app.page().list().click(u"formula-jq"_s);
        (void)SheetDriver(keyboard.app.window);
        Input::key(Qt::Key_4, Qt::ControlModifier);
    });
    add("from the sidebar", [](const KeyboardApp& keyboard) {
        keyboard.choose(search);
        Input::key(Qt::Key_Return);
    });
    add("once more", [](const KeyboardApp& keyboard) {
        keyboard.choose(search);
        keyboard.app.sidebar().click(search);
    });
}

void KeyboardTest::beginsASearchInItsField() {
    using Go = std::function<void(const KeyboardApp&)>;
    QFETCH(Go, go);
    const KeyboardApp keyboard;
    go(keyboard);
    QTRY_COMPARE(QApplication::focusWidget()->objectName(), u"searchField"_s);
    Input::type(u"curl"_s);
    QCOMPARE(keyboard.app.page().searchField().text(), u"curl"_s);
    QCOMPARE(keyboard.app.page().title(), u"Search"_s);
}

void KeyboardTest::passesTheSearchInTheSidebar() {
    const KeyboardApp keyboard;
    keyboard.choose(search);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"sidebar"_s);
    Input::key(Qt::Key_Down);
    QCOMPARE(*keyboard.app.window.content()->selectedCategory(), taps);
    // Other pages aren't begun by typing.
    Input::key(Qt::Key_1, Qt::ControlModifier);
    QCoreApplication::processEvents();
    QCOMPARE(QApplication::focusWidget()->objectName(), u"sidebar"_s);
}

void KeyboardTest::goesToTheSidebarFromAPageThatGoes() {
    const KeyboardApp keyboard;
    for (const QString& control : {u"searchField"_s, u"rowList"_s, u"refreshButton"_s}) {
        Input::key(Qt::Key_1, Qt::ControlModifier);
        QVERIFY2(Focus::tabTo(control), qPrintable(control));
        Input::key(Qt::Key_3, Qt::ControlModifier);
        QCoreApplication::processEvents();
        QCOMPARE(QApplication::focusWidget()->objectName(), u"sidebar"_s);
    }
}

void KeyboardTest::goesFromTheFieldToTheListAndBack() {
    KeyboardApp keyboard;
    QList<BrewPackage> many;
    for (int i = 10; i < 60; ++i)
        many.append(Samples::formula(u"package-%1"_s.arg(i)));
    keyboard.app.manager.formulae.set(many);
    QCoreApplication::processEvents();
    QVERIFY(Focus::tabTo(u"searchField"_s));
    Input::type(u"9"_s);
    QTRY_COMPARE(keyboard.app.page().title(), u"Formulae (5)"_s);
    Input::key(Qt::Key_Down);
    const ListDriver list = keyboard.app.page().list();
    QVERIFY(list.view().hasFocus());
    QCOMPARE(list.currentId(), u"formula-package-19"_s);
    QVERIFY(list.state(u"formula-package-19"_s).isCurrent);
    Input::key(Qt::Key_End);
    Input::key(Qt::Key_Escape);
    QTRY_COMPARE(keyboard.app.page().title(), u"Formulae (50)"_s);
    QVERIFY(list.view().hasFocus());
    QCOMPARE(list.currentId(), u"formula-package-59"_s);
    const QRect current = list.view().visualRect(list.view().currentIndex());
    QVERIFY(list.view().viewport()->rect().contains(current));
}

void KeyboardTest::reachesButtonsInEveryStyle() {
    QApplication::setStyle(new FieldsOnlyStyle);
    const auto restore = qScopeGuard([] { QApplication::setStyle(new LumoraStyle); });
    QCOMPARE(QPushButton().focusPolicy(), Qt::TabFocus);
    QCOMPARE(PushButton(u"Title"_s).focusPolicy(), Qt::StrongFocus);
}

void KeyboardTest::pressesButtonsAndLinksByReturn_data() {
    QTest::addColumn<SidebarCategory>("category");
    QTest::addColumn<QString>("button");
    QTest::newRow("of a symbol") << formulae << u"refreshButton"_s;
    QTest::newRow("with a title") << updates << u"updateAllButton"_s;
    QTest::newRow("of a page") << settings << u"doctorButton"_s;
    QTest::newRow("segment") << settings << u"segment-English"_s;
    QTest::newRow("menu") << formulae << u"applicationMenuButton"_s;
}

void KeyboardTest::pressesButtonsAndLinksByReturn() {
    QFETCH(SidebarCategory, category);
    QFETCH(QString, button);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        const KeyboardApp keyboard;
        keyboard.choose(category);
        QVERIFY(Focus::tabTo(button));
        const QSignalSpy clicked(&keyboard.app.page().button(button), &QAbstractButton::clicked);
        Input::key(key);
        QCOMPARE(clicked.count(), 1);
        if (QWidget* const menu = QApplication::activePopupWidget())
            menu->close();
    }
}

void KeyboardTest::opensAndClosesADetail() {
    const KeyboardApp keyboard;
    keyboard.goTo(u"formula-wget"_s);
    Input::key(Qt::Key_Return);
    const SheetDriver sheet(keyboard.app.window);
    QCOMPARE(require<QLabel>(sheet.panel(), u"detailName"_s).text(), u"wget"_s);
    QVERIFY(Focus::tabTo(u"homepageLink"_s));
    const BrowserDouble browser;
    Input::key(Qt::Key_Return);
    QCOMPARE(browser.opened().size(), 1);
    QVERIFY(Focus::tabTo(u"closeDetail"_s));
    Input::key(Qt::Key_Return);
    QTRY_VERIFY(!SheetDriver::isOpen(keyboard.app.window));
    QTRY_COMPARE(QApplication::focusWidget()->objectName(), u"rowList"_s);
    QCOMPARE(keyboard.app.page().list().currentId(), u"formula-wget"_s);
}

void KeyboardTest::scrollsADetail() {
    KeyboardApp keyboard;
    QByteArray report;
    for (int i = 0; i < 100; ++i)
        report += "line " + QByteArray::number(i) + '\n';
    keyboard.app.brew.answer(u"info wget"_s, report);
    keyboard.goTo(u"formula-wget"_s);
    Input::key(Qt::Key_Return);
    const SheetDriver sheet(keyboard.app.window);
    auto& scroll = require<QScrollArea>(sheet.panel(), u"detailScroll"_s);
    QTRY_VERIFY(scroll.verticalScrollBar()->maximum() > 0);
    const auto edge = [&scroll] {
        QCoreApplication::processEvents();
        return scroll.grab(QRect(0, 0, 2, scroll.height())).toImage();
    };
    const QImage without = edge();
    QVERIFY(Focus::tabTo(u"detailScroll"_s));
    QVERIFY(edge() != without);
    Input::key(Qt::Key_End);
    QCOMPARE(scroll.verticalScrollBar()->value(), scroll.verticalScrollBar()->maximum());
    Input::key(Qt::Key_Home);
    QCOMPARE(scroll.verticalScrollBar()->value(), 0);
    Input::key(Qt::Key_Tab);
    QVERIFY(edge() == without);
}

void KeyboardTest::filters() {
    const KeyboardApp keyboard;
    QVERIFY(Focus::tabTo(u"searchField"_s));
    Input::type(u"jq"_s);
    QTRY_COMPARE(keyboard.app.page().title(), u"Formulae (1)"_s);
    Input::key(Qt::Key_Escape);
    QTRY_COMPARE(keyboard.app.page().title(), u"Formulae (2)"_s);
}

void KeyboardTest::installs() {
    KeyboardApp keyboard;
    keyboard.app.brew.answer(u"search curl"_s, "==> Formulae\ncurl\ncurlie\n");
    keyboard.choose(SidebarCategory::search);
    QVERIFY(Focus::tabTo(u"searchField"_s));
    Input::type(u"curl"_s);
    Input::key(Qt::Key_Return);
    QTRY_VERIFY(keyboard.app.page().hasList());
    keyboard.app.brew.setFormulae({Samples::formula(u"curl"_s)});
    keyboard.goTo(u"formula-curl"_s);
    Input::key(Qt::Key_Right);
    Input::key(Qt::Key_Space);
    QTRY_COMPARE(keyboard.app.page().list().row(u"formula-curl"_s).actions.at(0).kind,
                 RowAction::Kind::Badge);
    QVERIFY(keyboard.app.brew.newRuns().contains(u"install curl"_s));
}

void KeyboardTest::upgradesOne() {
    KeyboardApp keyboard;
    keyboard.choose(updates);
    keyboard.app.brew.setOutdated({Samples::outdatedFormula(u"jq"_s)});
    keyboard.goTo(u"formula-wget"_s);
    Input::key(Qt::Key_Right);
    Input::key(Qt::Key_Return);
    QTRY_COMPARE(keyboard.app.page().title(), u"Updates (1)"_s);
    QCOMPARE(keyboard.app.brew.newRuns().constFirst(), u"upgrade wget"_s);
}

void KeyboardTest::upgradesAll() {
    KeyboardApp keyboard;
    keyboard.choose(updates);
    keyboard.app.brew.setOutdated({});
    QVERIFY(Focus::tabTo(u"updateAllButton"_s));
    Input::key(Qt::Key_Space);
    QTRY_COMPARE(keyboard.app.page().state(), u"All packages are up to date"_s);
    QCOMPARE(keyboard.app.brew.newRuns().constFirst(), u"upgrade"_s);
}

void KeyboardTest::uninstalls() {
    KeyboardApp keyboard;
    keyboard.app.brew.setFormulae({Samples::formula(u"jq"_s)});
    keyboard.goTo(u"formula-wget"_s);
    Input::key(Qt::Key_Delete);
    answer(u"Uninstall"_s);
    QTRY_COMPARE(keyboard.app.page().title(), u"Formulae (1)"_s);
    QCOMPARE(keyboard.app.brew.newRuns(),
             (QStringList{u"uninstall wget"_s, ScriptedBrew::infoFormulae}));
}

void KeyboardTest::addsATap() {
    KeyboardApp keyboard;
    keyboard.choose(taps);
    keyboard.app.brew.setTaps({u"a/b"_s, u"c/d"_s, u"e/f"_s});
    QVERIFY(Focus::tabTo(u"addTapButton"_s));
    Input::key(Qt::Key_Space);
    const SheetDriver sheet(keyboard.app.window);
    Input::type(u"e/f"_s);
    QVERIFY(Focus::tabTo(u"confirmAddTap"_s));
    Input::key(Qt::Key_Space);
    QTRY_COMPARE(keyboard.app.page().title(), u"Taps (3)"_s);
    QVERIFY(!SheetDriver::isOpen(keyboard.app.window));
    QCOMPARE(keyboard.app.brew.newRuns(), (QStringList{u"tap e/f"_s, ScriptedBrew::tap}));
}

void KeyboardTest::addsATapByTheDefaultKey() {
    KeyboardApp keyboard;
    keyboard.choose(taps);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        QVERIFY(Focus::tabTo(u"addTapButton"_s));
        Input::key(Qt::Key_Return);
        const SheetDriver sheet(keyboard.app.window);
        // There is nothing to add.
        Input::key(key);
        QVERIFY(sheet.sheet().isVisible());
        Input::type(u"e/f"_s);
        QVERIFY(Focus::tabTo(u"cancelAddTap"_s));
        Input::key(key);
        QTRY_VERIFY(!SheetDriver::isOpen(keyboard.app.window));
        keyboard.app.waitUntilLoaded();
        QCOMPARE(keyboard.app.brew.newRuns().count(u"tap e/f"_s), 1);
    }
    // In the field it adds once.
    QVERIFY(Focus::tabTo(u"addTapButton"_s));
    Input::key(Qt::Key_Return);
    const SheetDriver sheet(keyboard.app.window);
    Input::type(u"g/h"_s);
    Input::key(Qt::Key_Return);
    QTRY_VERIFY(!SheetDriver::isOpen(keyboard.app.window));
    keyboard.app.waitUntilLoaded();
    QCOMPARE(keyboard.app.brew.newRuns().count(u"tap g/h"_s), 1);
}

void KeyboardTest::correctsATap() {
    KeyboardApp keyboard;
    keyboard.choose(taps);
    QVERIFY(Focus::tabTo(u"addTapButton"_s));
    Input::key(Qt::Key_Space);
    const SheetDriver sheet(keyboard.app.window);
    keyboard.app.brew.fail(u"tap e"_s);
    keyboard.app.brew.hold(u"tap e"_s);
    Input::type(u"e"_s);
    QVERIFY(Focus::tabTo(u"confirmAddTap"_s));
    Input::key(Qt::Key_Space);
    QTRY_VERIFY(!sheet.button(u"confirmAddTap"_s).isEnabled());
    QVERIFY(sheet.button(u"confirmAddTap"_s).hasFocus());
    keyboard.app.brew.release(u"tap e"_s);
    QTRY_VERIFY(require<QLineEdit>(sheet.panel(), u"tapNameField"_s).hasFocus());
    Input::type(u"/f"_s);
    Input::key(Qt::Key_Return);
    QTRY_VERIFY(!SheetDriver::isOpen(keyboard.app.window));
    QVERIFY(keyboard.app.brew.runs().contains(u"tap e/f"_s));
    // What is gone takes no focus.
    QTRY_COMPARE(QApplication::focusWidget()->objectName(), u"addTapButton"_s);
    keyboard.app.waitUntilLoaded();
    QCOMPARE(QApplication::focusWidget()->objectName(), u"addTapButton"_s);
}

void KeyboardTest::keepsWhatIsTypedInASheet() {
    const KeyboardApp keyboard;
    keyboard.choose(taps);
    QVERIFY(Focus::tabTo(u"addTapButton"_s));
    Input::key(Qt::Key_Space);
    const SheetDriver sheet(keyboard.app.window);
    Input::type(u"e/f"_s);
    for (int key = Qt::Key_1; key <= Qt::Key_7; ++key)
        Input::key(Qt::Key(key), Qt::ControlModifier);
    keyboard.app.window.applicationMenu()->actions().constFirst()->trigger();
    QCoreApplication::processEvents();
    QCOMPARE(*keyboard.app.window.content()->selectedCategory(), taps);
    QVERIFY(SheetDriver::isOpen(keyboard.app.window));
    const auto& field = require<QLineEdit>(sheet.panel(), u"tapNameField"_s);
    QCOMPARE(field.text(), u"e/f"_s);
    QVERIFY(field.hasFocus());
    // Once it is closed they work again.
    Input::key(Qt::Key_Escape);
    Input::key(Qt::Key_2, Qt::ControlModifier);
    QCOMPARE(*keyboard.app.window.content()->selectedCategory(), casks);
}

void KeyboardTest::removesATap() {
    KeyboardApp keyboard;
    keyboard.choose(taps);
    keyboard.app.brew.setTaps({u"a/b"_s});
    keyboard.goTo(u"c/d"_s);
    Input::key(Qt::Key_Right);
    Input::key(Qt::Key_Return);
    answer(u"Remove"_s);
    QTRY_COMPARE(keyboard.app.page().title(), u"Taps (1)"_s);
    QCOMPARE(keyboard.app.brew.newRuns(), (QStringList{u"untap c/d"_s, ScriptedBrew::tap}));
}

void KeyboardTest::cleansUp() {
    KeyboardApp keyboard;
    keyboard.app.brew.answer(u"cleanup"_s, "Removed something\n");
    keyboard.choose(settings);
    QVERIFY(Focus::tabTo(u"cleanupButton"_s));
    Input::key(Qt::Key_Space);
    answer(u"Run Cleanup"_s);
    QTRY_VERIFY(findVisible<OutputSection>(keyboard.app.window, u"cleanupOutput"_s) != nullptr);
    QCOMPARE(require<OutputSection>(keyboard.app.window, u"cleanupOutput"_s).text()->output(),
             u"Removed something\n"_s);
    QCOMPARE(keyboard.app.brew.newRuns(), QStringList{u"cleanup"_s});
}

void KeyboardTest::runsTheDoctor() {
    KeyboardApp keyboard;
    keyboard.app.brew.answer(u"doctor"_s, "All is well.\n");
    keyboard.choose(settings);
    QVERIFY(Focus::tabTo(u"doctorButton"_s));
    Input::key(Qt::Key_Space);
    QTRY_VERIFY(findVisible<OutputSection>(keyboard.app.window, u"doctorOutput"_s) != nullptr);
    // Its text can be reached and copied, too.
    auto* const text = require<OutputSection>(keyboard.app.window, u"doctorOutput"_s).text();
    QVERIFY(Focus::tabTo([&](const QWidget& widget) { return &widget == text; }));
}

void KeyboardTest::changesTheLanguage() {
    const KeyboardApp keyboard;
    keyboard.choose(settings);
    QVERIFY(Focus::tabTo(u"segment-English"_s));
    Input::key(Qt::Key_Left);
    QTRY_COMPARE(keyboard.app.page().title(), u"설정"_s);
    QTRY_VERIFY(QApplication::focusWidget() != nullptr);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"segment-한국어"_s);
}

void KeyboardTest::closesAFailure() {
    KeyboardApp keyboard;
    keyboard.app.manager.errorMessage.set(u"Something failed"_s);
    QTRY_VERIFY(findVisible(keyboard.app.window, u"failureStrip"_s) != nullptr);
    QVERIFY(Focus::tabTo(u"closeFailure"_s));
    Input::key(Qt::Key_Space);
    QTRY_VERIFY(findVisible(keyboard.app.window, u"failureStrip"_s) == nullptr);
    QVERIFY(QApplication::focusWidget() != nullptr);
}

LUMORA_UI_TEST_MAIN(KeyboardTest)
#include "tst_keyboard.moc"
