// SPDX-License-Identifier: MIT
#include "AppWindow.h"
#include "Find.h"
#include "Input.h"
#include "Samples.h"
#include "SheetDriver.h"
#include "UiTest.h"
#include "shell/DetailColumn.h"
#include "shell/SidebarView.h"
#include "views/Page.h"
#include "widgets/ChipButton.h"
#include "widgets/Labels.h"
#include "widgets/RowListView.h"
#include "widgets/SearchField.h"
#include "widgets/StateView.h"

#include <QApplication>
#include <QLabel>
#include <QProcess>
#include <QSignalSpy>
#include <QSplitter>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

/// Notes what a state view says the first time it is painted.
class FirstPaint final : public QObject {
public:
    explicit FirstPaint(QWidget& root) {
        for (StateView* const state : root.findChildren<StateView*>())
            state->installEventFilter(this);
    }

    [[nodiscard]] QString text() const { return m_text; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && m_text.isNull())
            m_text = static_cast<StateView*>(watched)->text();
        return false;
    }

private:
    QString m_text;
};

const QStringList allLoads{ScriptedBrew::infoCasks, ScriptedBrew::infoFormulae,
                           ScriptedBrew::outdated, ScriptedBrew::tap};

QStringList sorted(QStringList lines) {
    lines.sort();
    return lines;
}

} // namespace

class ShellTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsTheLoadingFormulaeFirst();
    void refreshesOnceAtTheStart();
    void startsNoCommandBeforeTheFirstFrame();
    void startsTheCommandsWhereNoFrameComes();
    void opensAtItsSizeAndNotBelowTheSmallest();
    void keepsTheSidebarWithinItsWidths();
    void showsAPageForEveryCategory_data();
    void showsAPageForEveryCategory();
    void showsTheControlsOfOnePageAlone();
    void showsAHintWithoutACategory();
    void opensTheDetailOfAChosenRow();
    void goesOnToADependencyAndBack();
    void closesTheDetail_data();
    void closesTheDetail();
    void closesTheDetailWithTheCategory();
    void keepsEverythingBehindASheetOutOfReach();
    void givesTheDetailItsSize();
    void quitsWhenItsWindowIsClosed();
};

void ShellTest::showsTheLoadingFormulaeFirst() {
    AppWindow app;
    app.brew.hold(ScriptedBrew::infoFormulae);
    app.brew.setFormulae({Samples::formula(u"wget"_s)});
    const FirstPaint firstPaint(app.window);
    app.show();
    QTRY_COMPARE(firstPaint.text(), u"Loading formulae..."_s);
    QCOMPARE(app.window.content()->selectedCategory(), SidebarCategory::formulae);
    QCOMPARE(app.sidebar().selected(), u"Formulae"_s);
    QCOMPARE(app.page().title(), u"Formulae (0)"_s);
    QVERIFY(app.page().isBusy());
    app.brew.release(ScriptedBrew::infoFormulae);
    QTRY_COMPARE(app.page().title(), u"Formulae (1)"_s);
}

void ShellTest::refreshesOnceAtTheStart() {
    AppWindow app;
    QCOMPARE(app.brew.newRuns(), QStringList());
    app.showLoaded();
    QCOMPARE(sorted(app.brew.newRuns()), allLoads);
    app.window.hide();
    app.showLoaded();
    for (const Lang lang : allLangs)
        LangManager::shared().setCurrent(lang);
    QCoreApplication::processEvents();
    QVERIFY(!*app.manager.isLoadingFormulae);
    QCOMPARE(app.brew.newRuns(), QStringList());
}

void ShellTest::startsNoCommandBeforeTheFirstFrame() {
    AppWindow app;
    // It is painted in a later turn than this one.
    app.window.show();
    QVERIFY(*app.manager.isLoadingFormulae);
    QVERIFY(*app.manager.isLoadingTaps);
    // As long as commands take that nothing holds back.
    for (int i = 0; i < 3; ++i)
        QProcess::execute(u"/bin/zsh"_s, {u"-l"_s, u"-c"_s, app.manager.brewPath() + u" other"_s});
    QCOMPARE(app.brew.newRuns(), QStringList(3, u"other"_s));
    app.waitUntilLoaded();
    QCOMPARE(sorted(app.brew.newRuns()), allLoads);
}

void ShellTest::startsTheCommandsWhereNoFrameComes() {
    AppWindow app;
    app.brew.setFormulae({Samples::formula(u"wget"_s)});
    const FirstPaint firstPaint(app.window);
    // The offscreen platform paints minimised windows, too.
    QShowEvent shown;
    QCoreApplication::sendEvent(app.window.content(), &shown);
    QVERIFY(*app.manager.isLoadingFormulae);
    app.waitUntilLoaded();
    QVERIFY(firstPaint.text().isNull());
    QCOMPARE(sorted(app.brew.newRuns()), allLoads);
}

void ShellTest::opensAtItsSizeAndNotBelowTheSmallest() {
    AppWindow app;
    app.showLoaded();
    QCOMPARE(app.window.size(), QSize(900, 600));
    app.window.resize(100, 100);
    QTRY_COMPARE(app.window.size(), QSize(700, 450));
    QCOMPARE(app.window.windowHandle()->minimumSize(), QSize(700, 450));
    QCOMPARE(app.window.content()->size(), QSize(700, 450));
}

void ShellTest::keepsTheSidebarWithinItsWidths() {
    AppWindow app;
    app.showLoaded();
    const QWidget& sidebar = *app.window.content()->sidebar();
    // Up to the line between the columns.
    const int line = require<QSplitter>(app.window).handleWidth();
    QCOMPARE(sidebar.width() + line, 180);
    auto& split = require<QSplitter>(app.window);
    split.setSizes({10, 890});
    QCOMPARE(sidebar.width(), 160);
    split.setSizes({500, 400});
    QCOMPARE(sidebar.width(), 220);
    // It is the page that grows with the window.
    split.setSizes({170, 730});
    app.window.resize(1200, 700);
    QTRY_COMPARE(split.width(), 1200);
    QCOMPARE(sidebar.width(), 170);
}

void ShellTest::showsAPageForEveryCategory_data() {
    QTest::addColumn<SidebarCategory>("category");
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("title");
    using enum SidebarCategory;
    QTest::newRow("formulae") << formulae << u"FormulaListView"_s << u"Formulae (1)"_s;
    QTest::newRow("casks") << casks << u"CaskListView"_s << u"Casks (2)"_s;
    QTest::newRow("updates") << updates << u"UpdatesView"_s << u"Updates (1)"_s;
    QTest::newRow("search") << search << u"SearchView"_s << u"Search"_s;
    QTest::newRow("taps") << taps << u"TapsView"_s << u"Taps (3)"_s;
    QTest::newRow("settings") << settings << u"SettingsView"_s << u"Settings"_s;
    QTest::newRow("about") << about << u"AboutView"_s << u"About"_s;
}

void ShellTest::showsAPageForEveryCategory() {
    QFETCH(SidebarCategory, category);
    QFETCH(QString, page);
    QFETCH(QString, title);
    AppWindow app;
    app.brew.setFormulae({Samples::formula(u"wget"_s)});
    app.brew.setCasks({Samples::cask(u"iina"_s), Samples::cask(u"vlc"_s)});
    app.brew.setOutdated({Samples::outdatedFormula(u"wget"_s)});
    app.brew.setTaps({u"a/b"_s, u"c/d"_s, u"e/f"_s});
    app.showLoaded();
    // From another one, whichever this is.
    app.choose(category == SidebarCategory::about ? SidebarCategory::taps : SidebarCategory::about);
    app.choose(category);
    QCOMPARE(app.window.content()->selectedCategory(), category);
    const QObject* const shown = app.window.content()->detailColumn()->page();
    QCOMPARE(QString::fromLatin1(shown->metaObject()->className()), page);
    QTRY_COMPARE(app.page().title(), title);
}

void ShellTest::showsTheControlsOfOnePageAlone() {
    AppWindow app;
    app.brew.setFormulae({Samples::formula(u"wget"_s)});
    app.brew.setCasks({Samples::cask(u"iina"_s)});
    app.showLoaded();
    app.window.content()->setSelectedCategory(SidebarCategory::casks);
    // Although the page before is not deleted yet.
    QCoreApplication::processEvents();
    QStringList placeholders;
    for (const SearchField* const field : app.window.findChildren<SearchField*>()) {
        if (field->isVisible())
            placeholders.append(field->placeholderText());
    }
    QCOMPARE(placeholders, QStringList{u"Filter casks"_s});
    QCOMPARE(require<ElidedLabel>(app.window).text(), u"Casks (1)"_s);
}

void ShellTest::showsAHintWithoutACategory() {
    AppWindow app;
    app.showLoaded();
    app.window.content()->setSelectedCategory(std::nullopt);
    QTRY_COMPARE(app.page().title(), QString());
    QCOMPARE(require<SecondaryLabel>(app.window).text(), u"Select a category"_s);
    QCOMPARE(app.sidebar().selected(), QString());
    QVERIFY(!app.page().hasList());
    app.choose(SidebarCategory::casks);
    QTRY_COMPARE(app.page().title(), u"Casks (0)"_s);
}

void ShellTest::opensTheDetailOfAChosenRow() {
    AppWindow app;
    app.brew.setFormulae({Samples::formula(u"jq"_s), Samples::formula(u"wget"_s)});
    app.showLoaded();
    QVERIFY(!SheetDriver::isOpen(app.window));
    app.page().list().click(u"formula-wget"_s);
    QCOMPARE(app.window.content()->selection().selectedPackageID(), u"formula-wget"_s);
    QVERIFY(app.window.content()->showsDetail());
    const SheetDriver sheet(app.window);
    QCOMPARE(require<QLabel>(sheet.panel(), u"detailName"_s).text(), u"wget"_s);
    QCOMPARE(sheet.button(u"closeDetail"_s).text(), u"Close"_s);
    QCOMPARE(app.page().list().selectedIds(), QStringList{u"formula-wget"_s});
    // Another selection is shown in the same sheet.
    app.window.content()->selection().setSelectedPackageID(u"formula-jq"_s);
    QTRY_COMPARE(require<QLabel>(sheet.panel(), u"detailName"_s).text(), u"jq"_s);
}

void ShellTest::goesOnToADependencyAndBack() {
    AppWindow app;
    BrewPackage wget = Samples::formula(u"wget"_s);
    wget.dependencies = {u"libidn2"_s};
    BrewPackage libidn2 = Samples::formula(u"libidn2"_s);
    libidn2.dependencies = {u"gettext"_s};
    app.brew.setFormulae({Samples::formula(u"gettext"_s), libidn2, wget});
    app.showLoaded();
    app.page().list().click(u"formula-wget"_s);
    const SheetDriver sheet(app.window);
    const auto shown = [&sheet] { return require<QLabel>(sheet.panel(), u"detailName"_s).text(); };
    QCOMPARE(shown(), u"wget"_s);
    const auto back = [] { Input::key(Qt::Key_Left, Qt::AltModifier); };
    const auto follow = [&sheet] {
        auto& chip = require<ChipButton>(sheet.panel());
        chip.setFocus();
        Input::key(Qt::Key_Return);
    };
    // There is nothing to go back to.
    back();
    QCOMPARE(app.window.content()->selection().selectedPackageID(), u"formula-wget"_s);
    follow();
    QTRY_COMPARE(shown(), u"libidn2"_s);
    follow();
    QTRY_COMPARE(shown(), u"gettext"_s);
    // Of the row behind the sheet, too.
    QCOMPARE(app.page().list().selectedIds(), QStringList{u"formula-gettext"_s});
    back();
    QTRY_COMPARE(shown(), u"libidn2"_s);
    // Also from a button, which arrows alone would lead away from, and in another language.
    LangManager::shared().setCurrent(Lang::ko);
    const SheetDriver again(app.window);
    require<QWidget>(again.panel(), u"closeDetail"_s).setFocus();
    back();
    QTRY_COMPARE(require<QLabel>(again.panel(), u"detailName"_s).text(), u"wget"_s);
    back();
    QCOMPARE(app.window.content()->selection().selectedPackageID(), u"formula-wget"_s);
    // What is chosen in the list begins anew.
    LangManager::shared().setCurrent(Lang::en);
    app.window.content()->selection().goOnTo(u"formula-gettext"_s);
    app.window.content()->selection().setSelectedPackageID(std::nullopt);
    app.page().list().click(u"formula-libidn2"_s);
    back();
    QCOMPARE(app.window.content()->selection().selectedPackageID(), u"formula-libidn2"_s);
}

void ShellTest::closesTheDetail_data() {
    QTest::addColumn<std::function<void(AppWindow&)>>("close");
    const auto add = [](const char* name, const std::function<void(AppWindow&)>& close) {
        QTest::newRow(name) << close;
    };
    add("by its button", [](AppWindow& app) { SheetDriver(app.window).press(u"closeDetail"_s); });
    add("by Escape", [](AppWindow&) { Input::key(Qt::Key_Escape); });
    add("by Space on its button", [](AppWindow&) { Input::key(Qt::Key_Space); });
}

void ShellTest::closesTheDetail() {
    QFETCH(std::function<void(AppWindow&)>, close);
    AppWindow app;
    app.brew.setFormulae({Samples::formula(u"wget"_s)});
    app.showLoaded();
    for (int i = 0; i < 2; ++i) {
        app.page().list().click(u"formula-wget"_s);
        QVERIFY(SheetDriver::isOpen(app.window));
        close(app);
        QTRY_VERIFY(!SheetDriver::isOpen(app.window));
        QVERIFY(!app.window.content()->showsDetail());
        QCOMPARE(app.window.content()->selection().selectedPackageID(), std::nullopt);
        QTRY_COMPARE(app.page().list().selectedIds(), QStringList());
    }
}

void ShellTest::closesTheDetailWithTheCategory() {
    AppWindow app;
    app.brew.setFormulae({Samples::formula(u"wget"_s)});
    app.brew.setCasks({Samples::cask(u"iina"_s)});
    app.showLoaded();
    app.page().list().click(u"formula-wget"_s);
    const SheetDriver sheet(app.window);
    Input::key(Qt::Key_2, Qt::ControlModifier);
    QCOMPARE(app.window.content()->selectedCategory(), SidebarCategory::casks);
    QTRY_VERIFY(!SheetDriver::isOpen(app.window));
    QCOMPARE(app.window.content()->selection().selectedPackageID(), std::nullopt);
    QVERIFY(!app.window.content()->showsDetail());
    QTRY_COMPARE(app.page().list().selectedIds(), QStringList());
}

void ShellTest::keepsEverythingBehindASheetOutOfReach() {
    AppWindow app;
    app.brew.setFormulae({Samples::formula(u"jq"_s), Samples::formula(u"wget"_s)});
    app.showLoaded();
    app.page().list().click(u"formula-wget"_s);
    const SheetDriver sheet(app.window);
    app.choose(SidebarCategory::casks);
    app.page().press(u"refreshButton"_s);
    app.page().list().click(u"formula-jq"_s);
    QCOMPARE(app.window.content()->selectedCategory(), SidebarCategory::formulae);
    QCOMPARE(app.window.content()->selection().selectedPackageID(), u"formula-wget"_s);
    QVERIFY(!*app.manager.isLoadingFormulae);
    // Nor do the keys lead there.
    for (int i = 0; i < 20; ++i) {
        Input::key(i % 3 == 2 ? Qt::Key_Backtab : Qt::Key_Tab);
        QVERIFY(sheet.panel().isAncestorOf(QApplication::focusWidget()));
    }
    Input::key(Qt::Key_F, Qt::ControlModifier);
    QVERIFY(sheet.panel().isAncestorOf(QApplication::focusWidget()));
    Input::key(Qt::Key_Escape);
    QTRY_VERIFY(app.page().list().view().hasFocus());
}

void ShellTest::givesTheDetailItsSize() {
    AppWindow app;
    app.brew.setFormulae({Samples::formula(u"wget"_s)});
    app.showLoaded();
    app.page().list().click(u"formula-wget"_s);
    const SheetDriver sheet(app.window);
    for (const QSize size : {QSize(900, 600), QSize(700, 450), QSize(1600, 1000)}) {
        app.window.resize(size);
        QTRY_COMPARE(sheet.panel().parentWidget()->size(), size);
        const QRect panel = sheet.panel().geometry();
        QVERIFY(panel.width() >= 500 && panel.height() >= 400);
        QVERIFY(QRect(QPoint(), size).contains(panel));
        const QPoint distance = panel.center() - QRect(QPoint(), size).center();
        QVERIFY(distance.manhattanLength() <= 1);
    }
}

void ShellTest::quitsWhenItsWindowIsClosed() {
    AppWindow app;
    app.showLoaded();
    bool wasInTime = true;
    QTimer::singleShot(std::chrono::seconds(10), &app.window, [&] {
        wasInTime = false;
        QCoreApplication::exit();
    });
    QMetaObject::invokeMethod(&app.window, &QWidget::close, Qt::QueuedConnection);
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(wasInTime);
}

LUMORA_UI_TEST_MAIN(ShellTest)
#include "tst_shell.moc"
