// SPDX-License-Identifier: MIT
#include "AppScene.h"
#include "BrewAt.h"
#include "ControlTree.h"
#include "Find.h"
#include "ListDriver.h"
#include "SheetDriver.h"
#include "UiTest.h"
#include "shell/DetailColumn.h"
#include "views/Page.h"
#include "widgets/Labels.h"
#include "widgets/RowListView.h"

#include <QListView>
#include <QScrollArea>

using namespace Qt::StringLiterals;

using enum SidebarCategory;

namespace {

/// All that may be wrong.
QString faults(const QWidget& window) {
    return ControlTree::overlaps(window) + ControlTree::sticksOut(window) +
           ControlTree::clippedTexts(window);
}

constexpr QSize large{1600, 1000};

void addLooks() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<Lang>("lang");
}

QList<QSize> sizesIn(Lang lang) {
    QList<QSize> sizes{{700, 450}, {900, 600}};
    if (lang == Lang::en)
        sizes.append(large);
    return sizes;
}

template <class Add>
void forAllLooks(Add add) {
    for (const Lang lang : allLangs) {
        for (const QSize size : sizesIn(lang))
            add(size, lang);
    }
}

} // namespace

/// What can be clicked in the window, in its coordinates, by names.
QList<std::pair<QString, QRect>> targetsIn(const QWidget& window) {
    QList<std::pair<QString, QRect>> targets;
    const auto add = [&](const QString& name, const QWidget& widget, const QRect& area) {
        targets.append({name, QRect(widget.mapTo(&window, area.topLeft()), area.size())});
    };
    for (const auto* const button : window.findChildren<QAbstractButton*>()) {
        if (button->isVisible())
            add(u"%1 \"%2\""_s.arg(QLatin1StringView(button->metaObject()->className()),
                                   button->accessibleName() + button->text()),
                *button, button->rect());
    }
    for (const auto* const list : window.findChildren<RowListView*>()) {
        for (int row = 0; list->isVisible() && row < list->model()->rowCount(); ++row) {
            const QModelIndex index = list->model()->index(row, 0);
            const QList<RowAction> actions = list->rows().row(index).actions;
            for (qsizetype i = 0; i < actions.size(); ++i) {
                if (actions.at(i).canTrigger())
                    add(actions.at(i).title, *list->viewport(), list->actionRect(index, i));
            }
        }
    }
    return targets;
}

/// Nothing is clipped and nothing overlaps: every page, at both sizes, in all languages.
class WindowLayoutTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hasRoomForEverything_data();
    void hasRoomForEverything();
    void givesEveryPressItsRoom_data();
    void givesEveryPressItsRoom();
    void hasRoomForTheNotFoundPage_data();
    void hasRoomForTheNotFoundPage();
    void keepsTogetherWhatIsReadInALargeWindow_data();
    void keepsTogetherWhatIsReadInALargeWindow();
    void keepsTheSettingsTogetherInALargeWindow();
    void growsTheSheetsWithTheWindow();
    void keepsTheMenuButtonOffTheSidebar_data();
    void keepsTheMenuButtonOffTheSidebar();
};

void WindowLayoutTest::hasRoomForEverything_data() {
    QTest::addColumn<Lang>("lang");
    QTest::addColumn<const AppScene*>("scene");
    for (const Lang lang : allLangs) {
        for (const AppScene& scene : AppScene::all())
            QTest::addRow("%s, %s", scene.name, qUtf8Printable(rawValue(lang))) << lang << &scene;
    }
}

void WindowLayoutTest::hasRoomForEverything() {
    QFETCH(Lang, lang);
    QFETCH(const AppScene*, scene);
    AppWindow app(lang);
    app.window.resize(sizesIn(lang).constFirst());
    app.showLoaded();
    AppScene::fill(app);
    scene->enter(app);
    // The title of a page is cut only when a number is beyond all bounds.
    const auto cutTitle = [&app] {
        const auto& title = require<ElidedLabel>(require<PageHeader>(app.window));
        return title.text() == title.fullText() ? QString() : title.fullText();
    };
    // Most of what it takes is the window and what it loads.
    for (const QSize size : sizesIn(lang)) {
        app.window.resize(size);
        const QString name = QString::number(size.width());
        QTRY_COMPARE(name + faults(app.window) + cutTitle(), name);
        QCOMPARE(app.window.size(), size);
    }
}

void WindowLayoutTest::givesEveryPressItsRoom_data() {
    QTest::addColumn<const AppScene*>("scene");
    for (const AppScene& scene : AppScene::all())
        QTest::newRow(scene.name) << &scene;
}

void WindowLayoutTest::givesEveryPressItsRoom() {
    QFETCH(const AppScene*, scene);
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    // Lines of dependencies that lead somewhere.
    constexpr int many = 20;
    QList<BrewPackage> formulae = *app.manager.formulae;
    QStringList names;
    for (int i = 0; i < many; ++i)
        names.append(formulae.at(i % formulae.size()).name);
    for (BrewPackage& formula : formulae)
        formula.dependencies = names;
    app.manager.formulae.set(formulae);
    scene->enter(app);
    QTRY_COMPARE(faults(app.window), QString());
    constexpr int least = 24;
    const auto targets = targetsIn(app.window);
    QVERIFY(!targets.isEmpty());
    for (const auto& [name, area] : targets) {
        if (area.width() >= least && area.height() >= least)
            continue;
        // Small ones among text have as much to themselves: nothing else is pressed near by.
        QRect room(0, 0, qMax(least, area.width()), qMax(least, area.height()));
        room.moveCenter(area.center());
        for (const auto& [other, otherArea] : targets) {
            const bool isNear = otherArea != area && room.intersects(otherArea);
            QVERIFY2(!isNear, qPrintable(name + u" is too near to "_s + other));
        }
    }
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

void WindowLayoutTest::keepsTogetherWhatIsReadInALargeWindow_data() {
    QTest::addColumn<SidebarCategory>("category");
    for (const SidebarCategory category : {formulae, casks, updates, search, taps})
        QTest::newRow(qUtf8Printable(rawValue(category))) << category;
}

void WindowLayoutTest::keepsTogetherWhatIsReadInALargeWindow() {
    QFETCH(SidebarCategory, category);
    constexpr int readable = 900;
    AppWindow app;
    app.window.resize(large);
    app.showLoaded();
    AppScene::fill(app);
    app.choose(category);
    const auto left = [&app](const QWidget& widget) {
        return widget.mapTo(&app.window, QPoint(0, 0)).x();
    };
    const auto& header = require<PageHeader>(app.window);
    const int title = left(require<ElidedLabel>(header));
    const QRect column(left(header), 0, header.width(), 1);
    QVERIFY(column.width() > 1300);
    // The header's title stands above the names, and what ends a row below its controls.
    const ListDriver list = app.page().list();
    const QString id = list.ids().constLast();
    const QRect action = list.actionRect(id).translated(left(*list.view().viewport()), 0);
    QVERIFY(action.right() - title < readable);
    QVERIFY(qAbs((title - column.left()) - (column.right() - action.right())) < 20);
    // Painted there as well as pressed there.
    const QImage picture = list.view().viewport()->grab().toImage();
    const QRgb empty = picture.pixel(picture.width() - 20, list.rect(id).center().y());
    const auto isEmptyAt = [&](int x) {
        for (int y = list.rect(id).top(); y <= list.rect(id).bottom(); ++y) {
            if (picture.pixel(x - left(*list.view().viewport()), y) != empty)
                return false;
        }
        return true;
    };
    for (int x = column.left(); x < title - 1; ++x)
        QVERIFY(isEmptyAt(x));
    for (int x = action.right() + 1; x < column.right(); ++x)
        QVERIFY(isEmptyAt(x));
    const auto firstInk = [&] {
        int x = title - 1;
        while (x < column.right() && isEmptyAt(x))
            ++x;
        return x;
    };
    QVERIFY(firstInk() - title < 5);
}

void WindowLayoutTest::keepsTheSettingsTogetherInALargeWindow() {
    AppWindow app;
    app.window.resize(large);
    app.showLoaded();
    app.choose(settings);
    const Page& page = *app.window.content()->detailColumn()->page();
    const QWidget& content = *require<QScrollArea>(page).widget();
    QCOMPARE(content.width(), 880);
    const int left = content.mapTo(&page, QPoint(0, 0)).x();
    QVERIFY(qAbs(left - (page.width() - content.width() - left)) <= 1);
    // A narrow one has it all.
    app.window.resize(900, 600);
    QTRY_COMPARE(content.width(), page.width());
}

void WindowLayoutTest::growsTheSheetsWithTheWindow() {
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    app.window.content()->selection().setSelectedPackageID(app.page().list().ids().constFirst());
    const SheetDriver sheet(app.window);
    QCOMPARE(sheet.panel().size(), QSize(560, 470));
    app.window.resize(700, 450);
    QTRY_COMPARE(sheet.panel().size(), QSize(560, 402));
    app.window.resize(1200, 800);
    QTRY_COMPARE(sheet.panel().size(), QSize(746, 626));
    // No wider than its lines can be read.
    app.window.resize(large);
    QTRY_COMPARE(sheet.panel().size(), QSize(800, 783));
    QCOMPARE(faults(*sheet.panel().window()), QString());
}

void WindowLayoutTest::keepsTheMenuButtonOffTheSidebar_data() {
    hasRoomForTheNotFoundPage_data();
}

void WindowLayoutTest::keepsTheMenuButtonOffTheSidebar() {
    QFETCH(QSize, size);
    QFETCH(Lang, lang);
    AppWindow app(lang);
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
