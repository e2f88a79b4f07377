// SPDX-License-Identifier: MIT
#include "AppWindow.h"
#include "Input.h"
#include "Pixels.h"
#include "Samples.h"
#include "SheetDriver.h"
#include "UiTest.h"
#include "shell/SidebarDelegate.h"
#include "style/Theme.h"
#include "style/Typography.h"

#include <QApplication>
#include <QHelpEvent>
#include <QListView>
#include <QSignalSpy>
#include <QToolTip>

using namespace Qt::StringLiterals;

using enum SidebarCategory;

namespace {

QList<OutdatedPackage> outdatedFormulae(int count) {
    return QList<OutdatedPackage>(count, Samples::outdatedFormula(u"wget"_s));
}

QImage rowImage(const AppWindow& app, SidebarCategory category) {
    const SidebarDriver sidebar = app.sidebar();
    return sidebar.view().viewport()->grab(sidebar.rect(category)).toImage();
}

/// How many pixels of a row have about this colour.
int pixelsOf(const AppWindow& app, SidebarCategory category, const QColor& color) {
    constexpr int tolerance = 39;
    const QImage image = rowImage(app, category);
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += Pixels::areAlike(image.pixelColor(x, y), color, tolerance) ? 1 : 0;
    }
    return count;
}

} // namespace

class SidebarTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void knowsItsCategories_data();
    void knowsItsCategories();
    void acceptsExactlyItsRawValues();
    void listsThemInThreeSections_data();
    void listsThemInThreeSections();
    void showsTheSymbolOfEachCategory();
    void countsWhatIsThere();
    void countsNothingWhereThereIsNothing();
    void addsUpTheOutdatedPackages_data();
    void addsUpTheOutdatedPackages();
    void standsOutInOrange();
    void followsTheListsLive();
    void choosesByClick();
    void choosesByTheKeyboard();
    void tellsATitleThatIsCut();
    void doesNothingOnASectionTitle();
    void readsNothingElseOutOfTheManager();
};

void SidebarTest::knowsItsCategories_data() {
    QTest::addColumn<SidebarCategory>("category");
    QTest::addColumn<QString>("raw");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<QStringList>("names");
    const auto add = [](SidebarCategory category, const QString& raw, const QString& symbol,
                        const QStringList& names) {
        QTest::newRow(qUtf8Printable(raw)) << category << raw << symbol << names;
    };
    const auto inAll = [](const QString& name) { return QStringList{name, name, name}; };
    add(formulae, u"Formulae"_s, u"shippingbox"_s, inAll(u"Formulae"_s));
    add(casks, u"Casks"_s, u"macwindow"_s, inAll(u"Casks"_s));
    add(updates, u"Updates"_s, u"arrow.triangle.2.circlepath"_s,
        {u"업데이트"_s, u"Updates"_s, u"アップデート"_s});
    add(search, u"Search"_s, u"magnifyingglass"_s, {u"검색"_s, u"Search"_s, u"検索"_s});
    add(taps, u"Taps"_s, u"list.bullet"_s, inAll(u"Taps"_s));
    add(settings, u"Settings"_s, u"gearshape"_s, {u"설정"_s, u"Settings"_s, u"設定"_s});
    add(about, u"About"_s, u"info.circle"_s, {u"정보"_s, u"About"_s, u"情報"_s});
}

void SidebarTest::knowsItsCategories() {
    QFETCH(SidebarCategory, category);
    QFETCH(QString, raw);
    QFETCH(QString, symbol);
    QFETCH(QStringList, names);
    QCOMPARE(rawValue(category), raw);
    QCOMPARE(sidebarCategoryFromRawValue(raw), category);
    QCOMPARE(icon(category), symbol);
    for (const Lang lang : allLangs) {
        LangManager::shared().setCurrent(lang);
        QCOMPARE(localizedName(category), names.value(static_cast<int>(lang)));
    }
    LangManager::shared().setCurrent(Lang::en);
}

void SidebarTest::acceptsExactlyItsRawValues() {
    QCOMPARE(allSidebarCategories.size(), std::size_t{7});
    QVERIFY(std::ranges::is_sorted(allSidebarCategories));
    for (const QString& text :
         {u""_s, u"formulae"_s, u"FORMULAE"_s, u"Formulae "_s, u"Formula"_s, u"検索"_s})
        QCOMPARE(sidebarCategoryFromRawValue(text), std::nullopt);
}

void SidebarTest::listsThemInThreeSections_data() {
    QTest::addColumn<Lang>("lang");
    QTest::addColumn<QStringList>("titles");
    QTest::newRow("ko") << Lang::ko
                        << QStringList{u"패키지:"_s,  u"Formulae"_s, u"Casks"_s,   u"동작:"_s,
                                       u"업데이트"_s, u"검색"_s,     u"시스템:"_s, u"Taps"_s,
                                       u"설정"_s,     u"정보"_s};
    QTest::newRow("en") << Lang::en
                        << QStringList{u"Packages:"_s, u"Formulae"_s, u"Casks"_s,   u"Actions:"_s,
                                       u"Updates"_s,   u"Search"_s,   u"System:"_s, u"Taps"_s,
                                       u"Settings"_s,  u"About"_s};
    QTest::newRow("ja") << Lang::ja << QStringList{u"パッケージ:"_s, u"Formulae"_s,     u"Casks"_s,
                                                   u"アクション:"_s, u"アップデート"_s, u"検索"_s,
                                                   u"システム:"_s,   u"Taps"_s,         u"設定"_s,
                                                   u"情報"_s};
}

void SidebarTest::listsThemInThreeSections() {
    QFETCH(Lang, lang);
    QFETCH(QStringList, titles);
    AppWindow app(lang);
    app.showLoaded();
    QCOMPARE(app.sidebar().titles(), titles);
}

void SidebarTest::showsTheSymbolOfEachCategory() {
    AppWindow app;
    app.showLoaded();
    for (const SidebarCategory category : allSidebarCategories) {
        QCOMPARE(app.sidebar().symbol(category), icon(category));
        QVERIFY(pixelsOf(app, category, Theme::light().accent) > 0);
    }
}

void SidebarTest::countsWhatIsThere() {
    AppWindow app;
    app.brew.setFormulae({Samples::formula(u"jq"_s), Samples::dependency(u"oniguruma"_s)});
    app.brew.setCasks({Samples::cask(u"iina"_s)});
    app.brew.setTaps({u"a/b"_s, u"c/d"_s, u"e/f"_s});
    app.showLoaded();
    const SidebarDriver sidebar = app.sidebar();
    QCOMPARE(sidebar.badge(formulae), u"2"_s);
    QCOMPARE(sidebar.badge(casks), u"1"_s);
    QCOMPARE(sidebar.badge(taps), u"3"_s);
    for (const SidebarCategory category : {formulae, casks, taps})
        QVERIFY(!sidebar.isPill(category));
    for (const SidebarCategory category : {search, settings, about})
        QCOMPARE(sidebar.badge(category), QString());
}

void SidebarTest::countsNothingWhereThereIsNothing() {
    AppWindow app;
    app.showLoaded();
    for (const SidebarCategory category : allSidebarCategories)
        QCOMPARE(app.sidebar().badge(category), QString());
    QCOMPARE(pixelsOf(app, updates, Theme::light().countPill), 0);
}

void SidebarTest::addsUpTheOutdatedPackages_data() {
    QTest::addColumn<int>("formulae");
    QTest::addColumn<int>("casks");
    QTest::addColumn<QString>("badge");
    QTest::newRow("none") << 0 << 0 << QString();
    QTest::newRow("both") << 3 << 2 << u"5"_s;
    QTest::newRow("formulae") << 1 << 0 << u"1"_s;
    QTest::newRow("casks") << 0 << 12 << u"12"_s;
    QTest::newRow("many") << 1'200 << 34 << u"1234"_s;
}

void SidebarTest::addsUpTheOutdatedPackages() {
    QFETCH(int, formulae);
    QFETCH(int, casks);
    QFETCH(QString, badge);
    AppWindow app;
    app.showLoaded();
    app.manager.outdatedFormulae.set(outdatedFormulae(formulae));
    app.manager.outdatedCasks.set(QList<OutdatedPackage>(casks, Samples::outdatedCask(u"iina"_s)));
    QTRY_COMPARE(app.sidebar().badge(updates), badge);
    QVERIFY(app.sidebar().isPill(updates));
    QCOMPARE(pixelsOf(app, updates, Theme::light().countPill) > 0, !badge.isEmpty());
}

void SidebarTest::standsOutInOrange() {
    AppWindow app;
    app.showLoaded();
    app.manager.outdatedFormulae.set(outdatedFormulae(5));
    app.manager.formulae.set({Samples::formula(u"wget"_s)});
    QTRY_COMPARE(app.sidebar().badge(updates), u"5"_s);
    const QColor pill = Theme::light().countPill;
    QVERIFY(pixelsOf(app, updates, pill) > 60);
    QCOMPARE(pixelsOf(app, formulae, pill), 0);
    QVERIFY(pixelsOf(app, updates, Qt::white) > 0);
    // Bold in the size of a caption, 6 points beside it and 1 above and below, and no narrower
    // than high: a capsule of one digit is a circle.
    const QFont font = Typography::digits(Typography::caption, QFont::Bold);
    app.manager.outdatedFormulae.set(outdatedFormulae(1'234));
    QTRY_COMPARE(app.sidebar().badge(updates), u"1234"_s);
    const QRect shown = Pixels::boundsOf(rowImage(app, updates), pill);
    const QFontMetrics metrics(font);
    QCOMPARE(shown.height(), metrics.height() + 2 * 1);
    // No pixel of its round ends is quite full.
    const int width = metrics.horizontalAdvance(u"1234"_s) + 2 * 6;
    QVERIFY(shown.width() <= width && shown.width() >= width - 2);
}

void SidebarTest::followsTheListsLive() {
    AppWindow app;
    app.showLoaded();
    app.manager.formulae.set(Samples::manyFormulae(7));
    QTRY_COMPARE(app.sidebar().badge(formulae), u"7"_s);
    app.manager.formulae.set({});
    QTRY_COMPARE(app.sidebar().badge(formulae), QString());
    app.manager.taps.set({{u"a/b"_s}});
    QTRY_COMPARE(app.sidebar().badge(taps), u"1"_s);
}

void SidebarTest::choosesByClick() {
    AppWindow app;
    app.brew.setFormulae({Samples::formula(u"wget"_s)});
    app.showLoaded();
    for (const SidebarCategory category : {settings, casks, about, updates, formulae}) {
        app.sidebar().click(category);
        QCOMPARE(app.window.content()->selectedCategory(), category);
        QCOMPARE(app.sidebar().selected(), localizedName(category));
    }
    app.window.content()->selection().setSelectedPackageID(u"formula-wget"_s);
    QVERIFY(SheetDriver::isOpen(app.window));
    app.window.content()->setSelectedCategory(settings);
    QTRY_VERIFY(!SheetDriver::isOpen(app.window));
    QVERIFY(!app.window.content()->showsDetail());
}

void SidebarTest::choosesByTheKeyboard() {
    AppWindow app;
    app.showLoaded();
    app.sidebar().view().setFocus();
    // Over the titles of the sections.
    for (const SidebarCategory category : {casks, updates, search, taps, settings, about, about}) {
        Input::key(Qt::Key_Down);
        QCOMPARE(app.window.content()->selectedCategory(), category);
    }
    QVERIFY(app.sidebar().view().hasFocus());
    for (const SidebarCategory category : {settings, taps, search, updates, casks, formulae}) {
        Input::key(Qt::Key_Up);
        QCOMPARE(app.window.content()->selectedCategory(), category);
    }
    Input::key(Qt::Key_Up);
    QCOMPARE(app.window.content()->selectedCategory(), formulae);
}

void SidebarTest::tellsATitleThatIsCut() {
    AppWindow app;
    app.showLoaded();
    const QListView& view = app.sidebar().view();
    const auto toolTipOf = [&view](int row) {
        const QPoint place = view.visualRect(view.model()->index(row, 0)).center();
        QHelpEvent event(QEvent::ToolTip, place, view.viewport()->mapToGlobal(place));
        QApplication::sendEvent(view.viewport(), &event);
        return QToolTip::text();
    };
    constexpr int firstCategory = 1;
    QCOMPARE(toolTipOf(firstCategory), QString());
    const QString longTitle = u"A title that needs more room than any sidebar has"_s;
    for (const int row : {0, firstCategory})
        view.model()->setData(view.model()->index(row, 0), longTitle);
    // That of a section is none.
    QCOMPARE(toolTipOf(0), QString());
    QCOMPARE(toolTipOf(firstCategory), u"<qt>"_s + longTitle + u"</qt>"_s);
    // A title has less room beside a count.
    view.model()->setData(view.model()->index(firstCategory, 0), u"Formulae"_s);
    QTRY_COMPARE(toolTipOf(firstCategory), QString());
    view.model()->setData(view.model()->index(firstCategory, 0), QString(16, u'9'),
                          SidebarDelegate::BadgeRole);
    QCOMPARE(toolTipOf(firstCategory), u"<qt>Formulae</qt>"_s);
    QToolTip::hideText();
}

void SidebarTest::doesNothingOnASectionTitle() {
    AppWindow app;
    app.showLoaded();
    app.choose(casks);
    const QListView& view = app.sidebar().view();
    for (const int section : {0, 3, 6}) {
        const QModelIndex index = view.model()->index(section, 0);
        Input::click(*view.viewport(), view.visualRect(index).center());
        QCOMPARE(app.window.content()->selectedCategory(), casks);
        QCOMPARE(app.sidebar().selected(), u"Casks"_s);
    }
}

void SidebarTest::readsNothingElseOutOfTheManager() {
    AppWindow app;
    app.showLoaded();
    (void)app.brew.newRuns();
    const QSignalSpy changes(&app.manager, &BrewManager::objectWillChange);
    // Pages that load nothing when they are shown.
    for (const SidebarCategory category : {casks, settings, about, formulae})
        app.sidebar().click(category);
    QCoreApplication::processEvents();
    QCOMPARE(changes.count(), 0);
    QCOMPARE(app.brew.newRuns(), QStringList());
}

LUMORA_UI_TEST_MAIN(SidebarTest)
#include "tst_sidebar.moc"
