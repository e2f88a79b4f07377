// SPDX-License-Identifier: MIT
#include "AppWindow.h"
#include "Input.h"
#include "ProcessorTime.h"
#include "Samples.h"
#include "UiTest.h"
#include "widgets/RowListView.h"
#include "widgets/SearchField.h"

#include <QAccessible>
#include <QScrollBar>

using namespace Qt::StringLiterals;

using enum SidebarCategory;

namespace {

constexpr int rows = 8'000;
/// Of a frame at 60 Hz, in milliseconds.
constexpr double frame = 1'000.0 / 60;
/// Wide of the goal, which is less than a frame: this is no benchmark.
constexpr double farTooLong = 30 * frame;

/// The processor time of doing something and showing it.
double timeToShow(AppWindow& app, const std::function<void()>& change) {
    const ProcessorTime time;
    change();
    QCoreApplication::processEvents();
    // Painted whether or not the platform has got round to it.
    app.window.repaint();
    return time.elapsed();
}

void report(const char* what, double milliseconds) {
    qInfo("%s: %.1f ms, %.0f %% of a frame", what, milliseconds, 100 * milliseconds / frame);
    QVERIFY(milliseconds < farTooLong * ProcessorTime::slowness());
}

} // namespace

/// Lists as long as the whole catalogue.
class ManyRowsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void filtersWithEveryKey();
    void scrollsFromEndToEnd();
    void takesANewList();
    void repaintsForChangesElsewhere();
    void listsManySearchResults();
    void needsNoWidgetForARow();
};

void ManyRowsTest::filtersWithEveryKey() {
    AppWindow app;
    app.showLoaded();
    app.manager.formulae.set(Samples::manyFormulae(rows));
    QTRY_COMPARE(app.page().title(), u"Formulae (8000)"_s);
    app.page().searchField().setFocus();
    double longest = 0;
    // Ever fewer rows, and more again.
    const QList<std::pair<QString, int>> steps{
        {u"p"_s, 8'000},      {u"a"_s, 8'000}, {u"c"_s, 8'000}, {u"k"_s, 8'000},
        {u"age-00"_s, 1'000}, {u"1"_s, 100},   {u"23"_s, 1}};
    for (const auto& [keys, matches] : steps) {
        for (const QChar key : keys)
            longest = qMax(longest, timeToShow(app, [key] { Input::type(key); }));
        QCOMPARE(app.page().title(), u"Formulae (%1)"_s.arg(matches));
        QCOMPARE(app.page().list().view().model()->rowCount(), matches);
    }
    report("the slowest filter keystroke over 8,000 rows", longest);
    report("clearing the filter", timeToShow(app, [] { Input::key(Qt::Key_Escape); }));
    QCOMPARE(app.page().title(), u"Formulae (8000)"_s);
}

void ManyRowsTest::scrollsFromEndToEnd() {
    AppWindow app;
    app.showLoaded();
    app.manager.formulae.set(Samples::manyFormulae(rows));
    QTRY_COMPARE(app.page().title(), u"Formulae (8000)"_s);
    RowListView& view = app.page().list().view();
    QScrollBar& bar = *view.verticalScrollBar();
    double longest = 0;
    constexpr int steps = 40;
    for (int step = 0; step <= steps; ++step) {
        const int position = bar.maximum() * step / steps;
        longest = qMax(longest, timeToShow(app, [&] { bar.setValue(position); }));
    }
    report("the slowest scroll step", longest);
    QVERIFY(view.indexAt(view.viewport()->rect().bottomLeft() + QPoint(20, -20)).row() > rows - 3);
    view.setFocus();
    report("a jump to the first row by key", timeToShow(app, [] { Input::key(Qt::Key_Home); }));
    QCOMPARE(view.currentIndex().row(), 0);
    report("a step by key", timeToShow(app, [] { Input::key(Qt::Key_Down); }));
    QCOMPARE(view.currentIndex().row(), 1);
}

void ManyRowsTest::takesANewList() {
    AppWindow app;
    app.showLoaded();
    const QList<BrewPackage> packages = Samples::manyFormulae(rows);
    report("a new list of 8,000 rows",
           timeToShow(app, [&] { app.manager.formulae.set(packages); }));
    QTRY_COMPARE(app.page().title(), u"Formulae (8000)"_s);
    app.page().list().click(u"formula-package-00002"_s);
    Input::key(Qt::Key_Escape);
    QList<BrewPackage> reloaded = packages;
    reloaded.removeFirst();
    report("the same list again, with a current row",
           timeToShow(app, [&] { app.manager.formulae.set(reloaded); }));
    QTRY_COMPARE(app.page().title(), u"Formulae (7999)"_s);
    QCOMPARE(app.page().list().currentId(), u"formula-package-00002"_s);
}

void ManyRowsTest::repaintsForChangesElsewhere() {
    AppWindow app;
    app.showLoaded();
    app.manager.formulae.set(Samples::manyFormulae(rows));
    QTRY_COMPARE(app.page().title(), u"Formulae (8000)"_s);
    report("a change that does not concern the list",
           timeToShow(app, [&] { app.manager.casks.set({Samples::cask(u"iina"_s)}); }));
    QCOMPARE(app.sidebar().badge(casks), u"1"_s);
}

void ManyRowsTest::listsManySearchResults() {
    AppWindow app;
    app.showLoaded();
    app.window.content()->setSelectedCategory(search);
    QList<SearchResult> results;
    for (int i = 0; i < rows; ++i)
        results.append({u"hit-%1"_s.arg(i), i % 2 == 0 ? PackageType::formula : PackageType::cask,
                        i % 3 == 0});
    report("8,000 hits of a search",
           timeToShow(app, [&] { app.manager.searchResults.set(results); }));
    QTRY_VERIFY(app.page().hasList());
    QCOMPARE(app.page().list().view().model()->rowCount(), rows + 2);
    report("a change of a row among 8,000 hits",
           timeToShow(app, [&] { app.page().list().clickAction(u"formula-hit-2"_s); }));
    QTRY_VERIFY(!*app.manager.isRunningOperation);
}

void ManyRowsTest::needsNoWidgetForARow() {
    AppWindow app;
    app.showLoaded();
    const qsizetype before = app.window.findChildren<QObject*>().size();
    app.manager.formulae.set(Samples::manyFormulae(rows));
    QTRY_COMPARE(app.page().title(), u"Formulae (8000)"_s);
    QVERIFY(app.window.findChildren<QObject*>().size() < before + 20);
    const QAccessibleInterface* const list =
        QAccessible::queryAccessibleInterface(&app.page().list().view());
    QCOMPARE(list->childCount(), rows);
    QVERIFY(list->child(rows - 1)->text(QAccessible::Name).startsWith(u"package-07999"_s));
}

LUMORA_UI_TEST_MAIN(ManyRowsTest)
#include "tst_manyrows.moc"
