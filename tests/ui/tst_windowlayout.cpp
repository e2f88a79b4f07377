// SPDX-License-Identifier: MIT
#include "AppScene.h"
#include "BrewAt.h"
#include "ControlTree.h"
#include "Find.h"
#include "UiTest.h"
#include "shell/DetailColumn.h"
#include "widgets/Labels.h"

#include <QListView>

using namespace Qt::StringLiterals;

namespace {

/// All that may be wrong.
QString faults(const QWidget& window) {
    return ControlTree::overlaps(window) + ControlTree::sticksOut(window) +
           ControlTree::clippedTexts(window);
}

void addLooks() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<Lang>("lang");
}

template <class Add>
void forAllLooks(Add add) {
    for (const QSize size : {QSize(900, 600), QSize(700, 450)}) {
        for (const Lang lang : allLangs)
            add(size, lang);
    }
}

} // namespace

/// Nothing is clipped and nothing overlaps: every page, at both sizes, in all languages.
class WindowLayoutTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hasRoomForEverything_data();
    void hasRoomForEverything();
    void hasRoomForTheNotFoundPage_data();
    void hasRoomForTheNotFoundPage();
    void keepsTheMenuButtonOffTheSidebar_data();
    void keepsTheMenuButtonOffTheSidebar();
};

void WindowLayoutTest::hasRoomForEverything_data() {
    addLooks();
    QTest::addColumn<const AppScene*>("scene");
    forAllLooks([](QSize size, Lang lang) {
        for (const AppScene& scene : AppScene::all())
            QTest::addRow("%s, %d, %s", scene.name, size.width(), qUtf8Printable(rawValue(lang)))
                << size << lang << &scene;
    });
}

void WindowLayoutTest::hasRoomForEverything() {
    QFETCH(QSize, size);
    QFETCH(Lang, lang);
    QFETCH(const AppScene*, scene);
    AppWindow app;
    LangManager::shared().setCurrent(lang);
    app.window.resize(size);
    app.showLoaded();
    AppScene::fill(app);
    scene->enter(app);
    QTRY_COMPARE(faults(app.window), QString());
    QCOMPARE(app.window.size(), size);
    // The title of a page is cut only when a number is beyond all bounds.
    const auto& title = require<ElidedLabel>(require<PageHeader>(app.window));
    QCOMPARE(title.text(), title.fullText());
}

void WindowLayoutTest::hasRoomForTheNotFoundPage_data() {
    addLooks();
    forAllLooks([](QSize size, Lang lang) {
        QTest::addRow("%d, %s", size.width(), qUtf8Printable(rawValue(lang))) << size << lang;
    });
}

void WindowLayoutTest::hasRoomForTheNotFoundPage() {
    QFETCH(QSize, size);
    QFETCH(Lang, lang);
    LangManager::shared().setCurrent(lang);
    BrewManager manager(brewAt(u"/nonexistent/brew"_s));
    MainWindow window(manager, LangManager::shared(), {});
    window.resize(size);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTRY_COMPARE(faults(window), QString());
    QCOMPARE(window.size(), size);
}

void WindowLayoutTest::keepsTheMenuButtonOffTheSidebar_data() {
    hasRoomForTheNotFoundPage_data();
}

void WindowLayoutTest::keepsTheMenuButtonOffTheSidebar() {
    QFETCH(QSize, size);
    QFETCH(Lang, lang);
    AppWindow app;
    LangManager::shared().setCurrent(lang);
    app.window.resize(size);
    app.showLoaded();
    AppScene::fill(app);
    const auto& button = require<QAbstractButton>(app.window, u"applicationMenuButton"_s);
    const QListView& sidebar = app.sidebar().view();
    const QRect last = app.sidebar().rect(SidebarCategory::about);
    QVERIFY(sidebar.viewport()->mapTo(&app.window, last.bottomLeft()).y() <
            button.mapTo(&app.window, QPoint(0, 0)).y());
    // Room for symbol, title and count in every row.
    constexpr int symbolAndCount = 90;
    for (const SidebarCategory category : allSidebarCategories)
        QVERIFY(sidebar.fontMetrics().horizontalAdvance(localizedName(category)) + symbolAndCount <=
                sidebar.viewport()->width());
}

LUMORA_UI_TEST_MAIN(WindowLayoutTest)
#include "tst_windowlayout.moc"
