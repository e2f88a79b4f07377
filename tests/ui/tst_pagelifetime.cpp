// SPDX-License-Identifier: MIT
#include "AlertDriver.h"
#include "BrewManager.h"
#include "Find.h"
#include "Input.h"
#include "LangManager.h"
#include "PageDriver.h"
#include "Samples.h"
#include "ScriptedBrew.h"
#include "SheetDriver.h"
#include "UiTest.h"
#include "shell/ContentView.h"
#include "shell/DetailColumn.h"
#include "shell/MainWindow.h"
#include "views/Page.h"
#include "widgets/RowListView.h"
#include "widgets/SearchField.h"

#include <QApplication>
#include <QMenu>
#include <QPointer>

using namespace Qt::StringLiterals;

using enum SidebarCategory;

namespace {

const QString infoFormulae = ScriptedBrew::infoFormulae;
const QString infoCasks = ScriptedBrew::infoCasks;
const QString outdatedReport = ScriptedBrew::outdated;
const QString tapList = ScriptedBrew::tap;

/// A window that can go before its manager does, with something on every page.
struct MortalWindow final {
    MortalWindow() {
        LangManager::shared().setCurrent(Lang::en);
        brew.setFormulae({Samples::formula(u"wget"_s)});
        brew.setCasks({Samples::cask(u"iina"_s)});
        brew.setOutdated({Samples::outdatedFormula(u"wget"_s), Samples::outdatedCask(u"iina"_s)});
        brew.setTaps({u"a/b"_s});
        brew.answer(u"search jq"_s, "==> Formulae\njq\n");
        window->show();
        if (!QTest::qWaitForWindowActive(window.get()) ||
            !QTest::qWaitFor([this] { return isIdle(); }))
            qFatal("The lists are not loaded");
        QCoreApplication::processEvents();
    }

    [[nodiscard]] bool isIdle() const {
        return !*manager.isLoadingFormulae && !*manager.isLoadingCasks &&
               !*manager.isLoadingOutdated && !*manager.isLoadingTaps && !*manager.isSearching &&
               !*manager.isRunningOperation;
    }

    [[nodiscard]] PageDriver page() const { return PageDriver(*window); }

    void choose(SidebarCategory category) const {
        window->content()->setSelectedCategory(category);
        QCoreApplication::processEvents();
    }

    ScriptedBrew brew;
    std::unique_ptr<BrewManager> owned{std::make_unique<BrewManager>(brew.discovery())};
    BrewManager& manager{*owned};
    std::unique_ptr<MainWindow> window{
        std::make_unique<MainWindow>(manager, LangManager::shared(), QString())};
};

/// Something that a page has begun when it goes.
struct Action final {
    const char* name;
    SidebarCategory category;
    std::function<void(const MortalWindow&)> start;
    /// The run that has not ended then; empty if there is none.
    QString held{};
    /// What is run when it has ended, in this order unless it is all four loads.
    QStringList followUps{};

    [[nodiscard]] bool followsUpAtOnce() const { return followUps.size() == 4; }
};

void answer(const QString& button) {
    AlertDriver().press(button);
}

/// Without Return: it would search now, and once more half a second later, whatever there is by
/// then.
void search(const MortalWindow& mortal) {
    mortal.page().typeToSearch(u"jq"_s);
}

void openAddSheet(const MortalWindow& mortal) {
    mortal.page().press(u"addTapButton"_s);
    (void)SheetDriver(*mortal.window);
}

const QList<Action>& actions() {
    static const QList<Action> all{
        {"load formulae", formulae,
         [](const MortalWindow& mortal) { mortal.page().press(u"refreshButton"_s); }, infoFormulae},
        {"load casks", casks,
         [](const MortalWindow& mortal) { mortal.page().press(u"refreshButton"_s); }, infoCasks},
        {"load outdated", updates,
         [](const MortalWindow& mortal) { mortal.page().press(u"refreshButton"_s); },
         outdatedReport},
        {"load taps", taps,
         [](const MortalWindow& mortal) { mortal.page().press(u"refreshButton"_s); }, tapList},
        {"filter", formulae,
         [](const MortalWindow& mortal) { mortal.page().typeToSearch(u"w"_s); }},
        {"debounce", SidebarCategory::search,
         [](const MortalWindow& mortal) { mortal.page().typeToSearch(u"jq"_s); }},
        {"search", SidebarCategory::search, search, u"search jq"_s},
        {"install",
         SidebarCategory::search,
         [](const MortalWindow& mortal) {
             search(mortal);
             QTRY_VERIFY(mortal.page().hasList() && mortal.isIdle());
             mortal.page().list().clickAction(u"formula-jq"_s);
         },
         u"install jq"_s,
         {infoFormulae, u"search jq"_s}},
        {"upgrade formula",
         updates,
         [](const MortalWindow& mortal) { mortal.page().list().clickAction(u"formula-wget"_s); },
         u"upgrade wget"_s,
         {outdatedReport, infoFormulae}},
        {"upgrade cask",
         updates,
         [](const MortalWindow& mortal) { mortal.page().list().clickAction(u"cask-iina"_s); },
         u"upgrade --cask iina"_s,
         {outdatedReport, infoCasks}},
        {"upgrade all",
         updates,
         [](const MortalWindow& mortal) { mortal.page().press(u"updateAllButton"_s); },
         u"upgrade"_s,
         {infoCasks, infoFormulae, outdatedReport, tapList}},
        {"uninstall formula",
         formulae,
         [](const MortalWindow& mortal) {
             mortal.page().list().clickAction(u"formula-wget"_s);
             answer(u"Uninstall"_s);
         },
         u"uninstall wget"_s,
         {infoFormulae}},
        {"uninstall cask",
         casks,
         [](const MortalWindow& mortal) {
             mortal.page().list().clickAction(u"cask-iina"_s);
             answer(u"Uninstall"_s);
         },
         u"uninstall --cask iina"_s,
         {infoCasks}},
        {"add tap",
         taps,
         [](const MortalWindow& mortal) {
             openAddSheet(mortal);
             Input::type(u"c/d"_s);
             Input::key(Qt::Key_Return);
         },
         u"tap c/d"_s,
         {tapList}},
        {"remove tap",
         taps,
         [](const MortalWindow& mortal) {
             mortal.page().list().clickAction(u"a/b"_s);
             answer(u"Remove"_s);
         },
         u"untap a/b"_s,
         {tapList}},
        {"preview", settings,
         [](const MortalWindow& mortal) { mortal.page().press(u"previewButton"_s); },
         u"cleanup -n"_s},
        {"cleanup", settings,
         [](const MortalWindow& mortal) {
             mortal.page().press(u"cleanupButton"_s);
             answer(u"Run Cleanup"_s);
         },
         u"cleanup"_s},
        {"doctor", settings,
         [](const MortalWindow& mortal) { mortal.page().press(u"doctorButton"_s); }, u"doctor"_s},
        {"detail report", formulae,
         [](const MortalWindow& mortal) { mortal.page().list().click(u"formula-wget"_s); },
         u"info wget"_s},
        {"open alert", formulae,
         [](const MortalWindow& mortal) {
             mortal.page().list().clickAction(u"formula-wget"_s);
             (void)AlertDriver();
         }},
        {"open cleanup alert", settings,
         [](const MortalWindow& mortal) {
             mortal.page().press(u"cleanupButton"_s);
             (void)AlertDriver();
         }},
        {"open sheet", taps, openAddSheet},
        {"open menu", casks,
         [](const MortalWindow& mortal) { (void)mortal.page().list().openMenu(u"cask-iina"_s); }},
    };
    return all;
}

/// What happens to the page meanwhile.
struct Fate final {
    const char* name;
    std::function<void(MortalWindow&)> befall;
    /// Whether an open detail is built anew, which reads its report once more.
    bool reopensDetail{};
};

const QList<Fate>& fates() {
    static const QList<Fate> all{
        {"category", [](MortalWindow& mortal) { mortal.choose(SidebarCategory::about); }},
        {"language", [](MortalWindow&) { LangManager::shared().setCurrent(Lang::ja); }, true},
        {"both, twice",
         [](MortalWindow& mortal) {
             for (int i = 0; i < 2; ++i) {
                 LangManager::shared().setCurrent(Lang::ko);
                 mortal.window->content()->setSelectedCategory(SidebarCategory::about);
                 LangManager::shared().setCurrent(Lang::ja);
                 mortal.window->content()->setSelectedCategory(SidebarCategory::settings);
             }
         },
         true},
        {"window", [](MortalWindow& mortal) { mortal.window.reset(); }},
    };
    return all;
}

/// Begins the action; returns how many runs there are when the one that is held is under way.
qsizetype begin(MortalWindow& mortal, const Action& action) {
    mortal.choose(action.category);
    if (action.held.isEmpty()) {
        action.start(mortal);
        return mortal.brew.runs().size();
    }
    mortal.brew.hold(action.held);
    const qsizetype before = mortal.brew.runs().count(action.held);
    action.start(mortal);
    if (!QTest::qWaitFor([&] { return mortal.brew.runs().count(action.held) > before; }))
        qFatal("brew is not told to %s", qUtf8Printable(action.held));
    return mortal.brew.runs().size();
}

const QString lastRun = u"doctor"_s;

/// Runs something and waits for its end: what was started without being expected comes before it.
void runLast(BrewManager& manager) {
    const auto isThrough = std::make_shared<bool>(false);
    [](BrewManager& doctor, std::shared_ptr<bool> flag) -> QCoro::Task<> {
        co_await doctor.doctor();
        *flag = true;
    }(manager, isThrough);
    if (!QTest::qWaitFor([&] { return *isThrough; }))
        qFatal("brew doesn't answer");
}

/// Lets the run that is held end and waits until nothing is under way any more; returns the runs
/// after the first `begun`, which are as many as expected unless there are more or it takes too
/// long.
QStringList runsUntilTheEnd(MortalWindow& mortal, const Action& action, qsizetype begun,
                            qsizetype expected) {
    if (!action.held.isEmpty())
        mortal.brew.release(action.held);
    (void)QTest::qWaitFor(
        [&] { return mortal.brew.runs().size() - begun >= expected && mortal.isIdle(); });
    runLast(mortal.manager);
    if (!QTest::qWaitFor([&] { return mortal.isIdle(); }))
        qFatal("brew doesn't come to rest");
    QStringList runs = mortal.brew.runs().sliced(begun);
    runs.removeAt(runs.lastIndexOf(lastRun));
    return runs;
}

} // namespace

/// Pages go in the middle of what they have begun; what they have begun goes on.
class PageLifetimeTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void goesInTheMiddleOfAnAction_data();
    void goesInTheMiddleOfAnAction();
    void comesBackInTheMiddleOfAnAction_data();
    void comesBackInTheMiddleOfAnAction();
    void goesWithTheManager_data();
    void goesWithTheManager();
};

void PageLifetimeTest::initTestCase() {
    // Windows come and go here; none of them is the last one.
    QApplication::setQuitOnLastWindowClosed(false);
    // An alert takes no press before it has passed.
    QApplication::setDoubleClickInterval(10);
}

void PageLifetimeTest::cleanup() {
    LangManager::shared().setCurrent(Lang::en);
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
    QCOMPARE(QApplication::activePopupWidget(), nullptr);
}

void PageLifetimeTest::goesInTheMiddleOfAnAction_data() {
    QTest::addColumn<const Action*>("action");
    QTest::addColumn<const Fate*>("fate");
    for (const Fate& fate : fates()) {
        for (const Action& action : actions())
            QTest::addRow("%s: %s", fate.name, action.name) << &action << &fate;
    }
}

void PageLifetimeTest::goesInTheMiddleOfAnAction() {
    QFETCH(const Action*, action);
    QFETCH(const Fate*, fate);
    MortalWindow mortal;
    const qsizetype begun = begin(mortal, *action);
    const QPointer<Page> page = mortal.window->content()->detailColumn()->page();
    const bool isDetailOpen = mortal.window->content()->showsDetail();

    fate->befall(mortal);
    QTRY_VERIFY(!page);
    QStringList expected = action->followUps;
    if (isDetailOpen && fate->reopensDetail)
        expected.append(action->held);
    QStringList runs = runsUntilTheEnd(mortal, *action, begun, expected.size());
    if (action->followsUpAtOnce())
        runs.sort();
    QCOMPARE(runs, expected);
}

void PageLifetimeTest::comesBackInTheMiddleOfAnAction_data() {
    QTest::addColumn<const Action*>("action");
    for (const Action& action : actions()) {
        if (!action.held.isEmpty())
            QTest::addRow("%s", action.name) << &action;
    }
}

void PageLifetimeTest::comesBackInTheMiddleOfAnAction() {
    QFETCH(const Action*, action);
    MortalWindow mortal;
    const qsizetype begun = begin(mortal, *action);
    mortal.choose(about);
    mortal.choose(action->category);
    const QPointer<Page> page = mortal.window->content()->detailColumn()->page();
    QStringList runs = runsUntilTheEnd(mortal, *action, begun, action->followUps.size());
    if (action->followsUpAtOnce())
        runs.sort();
    QCOMPARE(runs, action->followUps);
    QVERIFY(page);
    // The page that is there now works like any other.
    QTRY_VERIFY(!mortal.page().isBusy());
    if (mortal.page().hasButton(u"refreshButton"_s))
        QTRY_VERIFY(mortal.page().button(u"refreshButton"_s).isEnabled());
}

void PageLifetimeTest::goesWithTheManager_data() {
    QTest::addColumn<const Action*>("action");
    QTest::addColumn<QString>("last");
    for (const Action& action : actions()) {
        if (!action.held.isEmpty())
            QTest::addRow("%s", action.name) << &action << action.held;
        if (action.followUps.size() == 2)
            QTest::addRow("%s, later", action.name) << &action << action.followUps.constFirst();
    }
}

void PageLifetimeTest::goesWithTheManager() {
    QFETCH(const Action*, action);
    QFETCH(QString, last);
    MortalWindow mortal;
    qsizetype begun = begin(mortal, *action);
    if (last != action->held) {
        mortal.brew.hold(last);
        mortal.brew.release(action->held);
        ++begun;
        QTRY_COMPARE(mortal.brew.runs().size(), begun);
    }
    mortal.window.reset();
    mortal.owned.reset();
    mortal.brew.release(last);
    BrewManager other(mortal.brew.discovery());
    runLast(other);
    runLast(other);
    // Nobody is left who could reload anything.
    QCOMPARE(mortal.brew.runs().sliced(begun), (QStringList{lastRun, lastRun}));
}

LUMORA_UI_TEST_MAIN(PageLifetimeTest)
#include "tst_pagelifetime.moc"
