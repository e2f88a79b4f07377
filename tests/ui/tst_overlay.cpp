// SPDX-License-Identifier: MIT
#include "AppWindow.h"
#include "Find.h"
#include "Focus.h"
#include "Input.h"
#include "PaintWatch.h"
#include "Pixels.h"
#include "Samples.h"
#include "UiTest.h"
#include "shell/DetailColumn.h"
#include "shell/OperationOverlay.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "views/Page.h"
#include "widgets/OutputText.h"
#include "widgets/RowListView.h"
#include "widgets/Spinner.h"

#include <QApplication>
#include <QFontInfo>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {

constexpr int sideMargin = 16;
constexpr int bottomMargin = 8;
constexpr int padding = 12;
constexpr int shadow = 4;
constexpr int tallestTranscript = 80;

OperationOverlay* overlay(const AppWindow& app) {
    return findVisible<OperationOverlay>(app.window);
}

/// Shows the overlay with this transcript, as a running operation does.
const OperationOverlay& showOverlay(AppWindow& app, const QString& transcript) {
    app.manager.operationOutput.set(transcript);
    app.manager.isRunningOperation.set(true);
    QCoreApplication::processEvents();
    return require<OperationOverlay>(app.window);
}

/// The panel without its shadow, in the coordinates of the window.
QRect panelOf(const OperationOverlay& overlay) {
    return QRect(overlay.mapTo(overlay.window(), QPoint(0, 0)), overlay.size())
        .adjusted(shadow, shadow, -shadow, -shadow);
}

/// Gives every page that has a list more rows than the window has room for.
void fillLists(AppWindow& app) {
    constexpr int count = 60;
    QList<BrewPackage> casks;
    QList<OutdatedPackage> outdated;
    QList<BrewTap> taps;
    QList<SearchResult> hits;
    for (int i = 0; i < count; ++i) {
        casks.append(Samples::cask(u"cask-%1"_s.arg(i)));
        outdated.append(Samples::outdatedFormula(u"formula-%1"_s.arg(i)));
        taps.append({.name = u"somebody/tap-%1"_s.arg(i)});
        hits.append({.name = u"hit-%1"_s.arg(i)});
    }
    app.manager.formulae.set(Samples::manyFormulae(count));
    app.manager.casks.set(casks);
    app.manager.outdatedFormulae.set(outdated);
    app.manager.taps.set(taps);
    app.manager.searchResults.set(hits);
    QCoreApplication::processEvents();
}

const QString longTranscript = QString(u"one line\n"_s).repeated(200);

/// All of the widget, above the panel.
bool isInSight(const QWidget& widget, const OperationOverlay& shown) {
    return widget.visibleRegion() == widget.rect() &&
           widget.mapTo(widget.window(), widget.rect().bottomLeft()).y() < panelOf(shown).top();
}

} // namespace

class OverlayTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isThereExactlyWhileAnOperationRuns();
    void isAbsentWhateverTheTranscriptHolds();
    void showsWhatTheRunningOperationSays();
    void comesForEveryOperation_data();
    void comesForEveryOperation();
    void floatsAboveTheBottomOfTheWindow();
    void givesItsContentItsPlaces();
    void scrollsALongTranscript();
    void paintsNothingButItsSpinnerWhileTheOperationRuns();
    void showsItsHeaderAboveAnEmptyTranscript();
    void speaksTheLanguage_data();
    void speaksTheLanguage();
    void takesTheTranscriptAsItIs();
    void isASurfaceOfItsOwn_data();
    void isASurfaceOfItsOwn();
    void leavesTheListsInReach_data();
    void leavesTheListsInReach();
    void leavesTheCurrentRowInSight();
    void leavesTheSettingsInReach();
    void leavesTheLinksInReach();
    void leavesTheCurrentControlInSight_data();
    void leavesTheCurrentControlInSight();
    void leavesMenuAndSidebarInReach_data();
    void leavesMenuAndSidebarInReach();
    void hasAShadowAroundIt();
    void givesTheKeyboardBack_data();
    void givesTheKeyboardBack();
    void keepsTheKeyboardInAnotherLanguage();
};

void OverlayTest::isThereExactlyWhileAnOperationRuns() {
    AppWindow app;
    app.showLoaded();
    QVERIFY(overlay(app) == nullptr);
    app.brew.hold(u"install wget"_s);
    const auto install = app.manager.install(u"wget"_s, PackageType::formula);
    QTRY_VERIFY(overlay(app) != nullptr);
    app.brew.release(u"install wget"_s);
    QTRY_VERIFY(install.isReady());
    QTRY_VERIFY(overlay(app) == nullptr);
    QVERIFY(app.window.findChildren<OperationOverlay*>().isEmpty());
}

void OverlayTest::isAbsentWhateverTheTranscriptHolds() {
    AppWindow app;
    app.showLoaded();
    app.manager.operationOutput.set(u"a transcript of earlier"_s);
    QCoreApplication::processEvents();
    QVERIFY(overlay(app) == nullptr);
}

void OverlayTest::showsWhatTheRunningOperationSays() {
    AppWindow app;
    app.showLoaded();
    const OperationOverlay& shown = showOverlay(app, u"Upgrading wget...\n"_s);
    QCOMPARE(shown.output(), u"Upgrading wget...\n"_s);
    app.manager.operationOutput.set(u"Upgrading wget...\nmore"_s);
    QCoreApplication::processEvents();
    QCOMPARE(overlay(app), &shown);
    QCOMPARE(require<OutputText>(shown).toPlainText(), u"Upgrading wget...\nmore"_s);
}

void OverlayTest::comesForEveryOperation_data() {
    QTest::addColumn<SidebarCategory>("page");
    for (const SidebarCategory category : allSidebarCategories)
        QTest::newRow(qUtf8Printable(rawValue(category))) << category;
}

void OverlayTest::comesForEveryOperation() {
    QFETCH(SidebarCategory, page);
    AppWindow app;
    app.showLoaded();
    app.choose(page);
    const OperationOverlay& shown = showOverlay(app, u"Adding tap a/b...\n"_s);
    // On top of whatever the page shows there.
    QWidget* const below = app.window.childAt(panelOf(shown).center());
    QVERIFY(below == &shown || shown.isAncestorOf(below));
}

void OverlayTest::floatsAboveTheBottomOfTheWindow() {
    AppWindow app;
    app.showLoaded();
    const OperationOverlay& shown = showOverlay(app, u"Upgrading wget...\n"_s);
    for (const QSize size : {QSize(900, 600), QSize(700, 450), QSize(1300, 800)}) {
        app.window.resize(size);
        QTRY_COMPARE(panelOf(shown).left(), sideMargin);
        QTRY_COMPARE(panelOf(shown).right(), size.width() - sideMargin - 1);
        QTRY_COMPARE(panelOf(shown).bottom(), size.height() - bottomMargin - 1);
    }
}

void OverlayTest::givesItsContentItsPlaces() {
    AppWindow app;
    app.showLoaded();
    const OperationOverlay& shown = showOverlay(app, u"Upgrading wget...\n"_s);
    const auto inPanel = [&shown](const QWidget& widget) {
        return QRect(widget.mapTo(&shown, QPoint(-shadow, -shadow)), widget.size());
    };
    const QRect spinner = inPanel(require<Spinner>(shown));
    const QRect label = inPanel(require<QLabel>(shown, u"runningLabel"_s));
    const QRect transcript = inPanel(require<OutputText>(shown));
    QCOMPARE(spinner.left(), padding);
    QCOMPARE(qMin(spinner.top(), label.top()), padding);
    QVERIFY(label.left() > spinner.right());
    QCOMPARE(transcript.left(), padding);
    QCOMPARE(transcript.width(), panelOf(shown).width() - 2 * padding);
    QCOMPARE(transcript.top(), qMax(spinner.bottom(), label.bottom()) + 1 + 8);
    QCOMPARE(transcript.bottom() + 1 + padding, panelOf(shown).height());
    QVERIFY(QFontInfo(require<OutputText>(shown).font()).fixedPitch());
    QCOMPARE(require<QLabel>(shown, u"runningLabel"_s).font(),
             Typography::font(Typography::caption, QFont::Medium));
    QCOMPARE(require<OutputText>(shown).font(), Typography::monospace(Typography::caption2));
    QCOMPARE(Theme::light().overlayShadow, withOpacity(Qt::black, 0.33));
    QCOMPARE(Theme::dark().overlayShadow, withOpacity(Qt::black, 0.33));
}

void OverlayTest::scrollsALongTranscript() {
    AppWindow app;
    app.showLoaded();
    const OperationOverlay& shown = showOverlay(app, u"one line"_s);
    const int low = panelOf(shown).height();
    app.manager.operationOutput.set(QString(u"one line\n"_s).repeated(200));
    QCoreApplication::processEvents();
    auto& text = require<OutputText>(shown);
    QCOMPARE(text.height(), tallestTranscript);
    const int tall = panelOf(shown).height();
    QVERIFY(tall > low && tall < low + tallestTranscript);
    QCOMPARE(panelOf(shown).bottom(), app.window.height() - bottomMargin - 1);
    QVERIFY(text.verticalScrollBar()->isVisible());
    QVERIFY(text.verticalScrollBar()->maximum() > 0);
    app.manager.operationOutput.set(u"one line"_s);
    QCoreApplication::processEvents();
    QCOMPARE(panelOf(shown).height(), low);
    // A new one has room for a long line, too, which is wrapped.
    app.manager.isRunningOperation.set(false);
    QCoreApplication::processEvents();
    const OperationOverlay& again = showOverlay(app, QString(2000, u'w'));
    QCOMPARE(require<OutputText>(again).height(), tallestTranscript);
    QVERIFY(again.rect().contains(require<OutputText>(again).geometry()));
    QCOMPARE(panelOf(again).height(), tall);
}

void OverlayTest::paintsNothingButItsSpinnerWhileTheOperationRuns() {
    AppWindow app;
    app.showLoaded();
    const auto& spinner = require<Spinner>(showOverlay(app, u"Upgrading wget...\n"_s));
    PaintWatch paints(spinner);
    QTRY_VERIFY(paints.count() > 1);
    paints.forget();
    QTRY_VERIFY(paints.count() > 2);
    QCOMPARE(paints.area(), QRect(spinner.mapTo(&app.window, QPoint()), spinner.size()));
}

void OverlayTest::showsItsHeaderAboveAnEmptyTranscript() {
    AppWindow app;
    app.showLoaded();
    const OperationOverlay& shown = showOverlay(app, {});
    QVERIFY(findVisible<Spinner>(shown) != nullptr);
    QCOMPARE(require<QLabel>(shown, u"runningLabel"_s).text(), u"Running..."_s);
    QCOMPARE(shown.output(), QString());
}

void OverlayTest::speaksTheLanguage_data() {
    QTest::addColumn<Lang>("lang");
    QTest::addColumn<QString>("text");
    QTest::newRow("ko") << Lang::ko << u"실행 중..."_s;
    QTest::newRow("en") << Lang::en << u"Running..."_s;
    QTest::newRow("ja") << Lang::ja << u"実行中..."_s;
}

void OverlayTest::speaksTheLanguage() {
    QFETCH(Lang, lang);
    QFETCH(QString, text);
    AppWindow app(lang);
    app.showLoaded();
    QCOMPARE(require<QLabel>(showOverlay(app, {}), u"runningLabel"_s).text(), text);
}

void OverlayTest::takesTheTranscriptAsItIs() {
    AppWindow app;
    app.showLoaded();
    const QString transcript = u"Installing <b>a</b>...\n\n  two\tcolumns &amp; %1\n"_s;
    const auto& text = require<OutputText>(showOverlay(app, transcript));
    QCOMPARE(text.output(), transcript);
    QCOMPARE(text.toPlainText(), transcript.chopped(1));
}

void OverlayTest::isASurfaceOfItsOwn_data() {
    QTest::addColumn<const Theme*>("theme");
    QTest::newRow("light") << &Theme::light();
    QTest::newRow("dark") << &Theme::dark();
}

void OverlayTest::isASurfaceOfItsOwn() {
    QFETCH(const Theme* const, theme);
    const QPalette before = QApplication::palette();
    QApplication::setPalette(theme->palette());
    const auto restore = qScopeGuard([&before] { QApplication::setPalette(before); });
    AppWindow app;
    app.showLoaded();
    const QRect panel = panelOf(showOverlay(app, {}));
    const QImage shown = app.window.grab().toImage();
    const int middle = panel.center().y();
    constexpr int noticeable = 22;
    QVERIFY(!Pixels::areAlike(shown.pixelColor(panel.right(), middle),
                              shown.pixelColor(panel.right() - 1, middle), noticeable));
}

void OverlayTest::leavesTheListsInReach_data() {
    QTest::addColumn<SidebarCategory>("page");
    using enum SidebarCategory;
    for (const SidebarCategory category : {formulae, casks, updates, search, taps})
        QTest::newRow(qUtf8Printable(rawValue(category))) << category;
}

void OverlayTest::leavesTheListsInReach() {
    QFETCH(SidebarCategory, page);
    AppWindow app;
    app.showLoaded();
    fillLists(app);
    app.choose(page);
    const ListDriver list = app.page().list();
    auto& bar = *list.view().verticalScrollBar();
    const auto bottomOf = [&](const QString& id) {
        return list.view().viewport()->mapTo(&app.window, list.rect(id).bottomLeft()).y();
    };
    const QString last = list.ids().constLast();
    const int before = bottomOf(last);
    QVERIFY(before >= app.window.height() - 1);
    const int position = bar.value();
    // What is there already stays where it is.
    const OperationOverlay& shown = showOverlay(app, u"one line"_s);
    QCOMPARE(bar.value(), position);
    QVERIFY(bar.maximum() > position);
    bar.setValue(bar.maximum());
    QVERIFY(bottomOf(last) < panelOf(shown).top());
    // Also when the overlay has become higher, and in a page that is opened only now.
    app.manager.operationOutput.set(QString(u"one line\n"_s).repeated(200));
    QCoreApplication::processEvents();
    QVERIFY(bottomOf(last) < panelOf(shown).top());
    app.choose(SidebarCategory::about);
    app.choose(page);
    QVERIFY(app.page().list().view().viewport()->mapTo(&app.window, QPoint(0, 0)).y() +
                app.page().list().view().viewport()->height() <=
            panelOf(shown).top());

    app.manager.isRunningOperation.set(false);
    QCoreApplication::processEvents();
    const QWidget& viewport = *app.page().list().view().viewport();
    QCOMPARE(viewport.mapTo(&app.window, QPoint(0, viewport.height())).y(), app.window.height());
}

void OverlayTest::leavesTheCurrentRowInSight() {
    AppWindow app;
    app.showLoaded();
    fillLists(app);
    const ListDriver list = app.page().list();
    list.view().setFocus();
    Input::key(Qt::Key_Down);
    const auto bottom = [&] {
        const QRect rect = list.view().visualRect(list.view().currentIndex());
        return list.view().viewport()->mapTo(&app.window, rect.bottomLeft()).y();
    };
    while (bottom() < app.window.height() - 60)
        Input::key(Qt::Key_Down);
    const QString id = list.currentId();
    const OperationOverlay& shown = showOverlay(app, u"one line"_s);
    QVERIFY(bottom() < panelOf(shown).top());
    QCOMPARE(list.currentId(), id);
    Input::key(Qt::Key_End);
    QVERIFY(bottom() < panelOf(shown).top());
}

void OverlayTest::leavesTheSettingsInReach() {
    AppWindow app;
    app.window.resize(700, 450);
    app.showLoaded();
    app.choose(SidebarCategory::settings);
    const OperationOverlay& shown = showOverlay(app, QString(u"one line\n"_s).repeated(200));
    const auto& area = require<QScrollArea>(*app.window.content()->detailColumn()->page());
    const auto& button = app.page().button(u"doctorButton"_s);
    const auto isInReach = [&] {
        area.verticalScrollBar()->setValue(area.verticalScrollBar()->maximum());
        return button.mapTo(&app.window, button.rect().bottomLeft()).y() < panelOf(shown).top();
    };
    QTRY_VERIFY(isInReach());
}

void OverlayTest::leavesTheLinksInReach() {
    AppWindow app;
    app.window.resize(700, 450);
    app.showLoaded();
    app.choose(SidebarCategory::about);
    const auto& first = app.page().button(u"link-house"_s);
    const auto place = [&] { return first.mapTo(&app.window, QPoint(0, 0)); };
    const QPoint before = place();
    const OperationOverlay& shown = showOverlay(app, longTranscript);
    QVERIFY(Focus::tabTo(u"link-house"_s));
    for (const QString& name : {u"link-house"_s, u"link-envelope"_s, u"link-doc.text"_s}) {
        QCOMPARE(QApplication::focusWidget()->objectName(), name);
        QVERIFY(isInSight(*QApplication::focusWidget(), shown));
        Input::key(Qt::Key_Tab);
    }
    app.manager.isRunningOperation.set(false);
    QTRY_COMPARE(place(), before);
}

void OverlayTest::leavesTheCurrentControlInSight_data() {
    QTest::addColumn<SidebarCategory>("page");
    QTest::addColumn<QString>("control");
    QTest::newRow("a link") << SidebarCategory::about << u"link-doc.text"_s;
    QTest::newRow("a button") << SidebarCategory::settings << u"doctorButton"_s;
}

void OverlayTest::leavesTheCurrentControlInSight() {
    QFETCH(SidebarCategory, page);
    QFETCH(QString, control);
    AppWindow app;
    app.window.resize(700, 450);
    app.showLoaded();
    app.choose(page);
    QVERIFY(Focus::tabTo(control));
    const QWidget& widget = *QApplication::focusWidget();
    const OperationOverlay& shown = showOverlay(app, u"one line"_s);
    QVERIFY(isInSight(widget, shown));
    app.manager.operationOutput.set(longTranscript);
    QCoreApplication::processEvents();
    QVERIFY(isInSight(widget, shown));
    // Who looks at something else then isn't called back by every line.
    auto& bar =
        *require<QScrollArea>(*app.window.content()->detailColumn()->page()).verticalScrollBar();
    QVERIFY(bar.value() > 0);
    bar.setValue(0);
    app.manager.operationOutput.set(longTranscript + u"more"_s);
    QCoreApplication::processEvents();
    QCOMPARE(bar.value(), 0);
}

void OverlayTest::leavesMenuAndSidebarInReach_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("lines");
    QTest::newRow("usual") << QSize(900, 600) << 1;
    QTest::newRow("smallest") << QSize(700, 450) << 1;
    QTest::newRow("smallest with a long transcript") << QSize(700, 450) << 200;
}

void OverlayTest::leavesMenuAndSidebarInReach() {
    QFETCH(QSize, size);
    QFETCH(int, lines);
    AppWindow app;
    app.window.resize(size);
    app.showLoaded();
    const auto& button = require<QAbstractButton>(app.window, u"applicationMenuButton"_s);
    const QPoint usual = button.pos();
    const OperationOverlay& shown = showOverlay(app, QString(u"one line\n"_s).repeated(lines));
    QVERIFY(!button.geometry().intersects(panelOf(shown)));
    const QListView& list = app.sidebar().view();
    const auto isInReach = [&] {
        list.verticalScrollBar()->setValue(list.verticalScrollBar()->maximum());
        const QPoint end = app.sidebar().rect(SidebarCategory::about).bottomLeft();
        return list.viewport()->mapTo(&app.window, end).y() < button.y();
    };
    QTRY_VERIFY(isInReach());
    app.sidebar().click(SidebarCategory::about);
    QTRY_COMPARE(app.page().title(), u"About"_s);
    Input::click(button);
    QTRY_VERIFY(app.window.applicationMenu()->isVisible());
    app.window.applicationMenu()->close();
    app.manager.isRunningOperation.set(false);
    QCoreApplication::processEvents();
    QCOMPARE(button.pos(), usual);
}

void OverlayTest::hasAShadowAroundIt() {
    AppWindow app;
    app.showLoaded();
    const QImage without = app.window.grab().toImage();
    const QRect panel = panelOf(showOverlay(app, u"one line"_s));
    const QImage with = app.window.grab().toImage();
    const auto darkening = [&](const QPoint& place) {
        return without.pixelColor(place).lightness() - with.pixelColor(place).lightness();
    };
    // No offset: as dark on the left as on the right and above as below.
    for (const QPoint edge :
         {QPoint(panel.right() + 1, panel.center().y()),
          QPoint(panel.left() - 1, panel.center().y()), QPoint(panel.center().x(), panel.top() - 1),
          QPoint(panel.center().x(), panel.bottom() + 1)})
        QVERIFY(darkening(edge) > 0);
    QVERIFY(darkening({panel.center().x(), panel.top() - 1}) >
            darkening({panel.center().x(), panel.top() - shadow}));
    QCOMPARE(darkening({panel.center().x(), panel.top() - shadow - 3}), 0);
}

void OverlayTest::givesTheKeyboardBack_data() {
    QTest::addColumn<SidebarCategory>("page");
    QTest::addColumn<QString>("focused");
    QTest::newRow("to the list") << SidebarCategory::formulae << u"rowList"_s;
    QTest::newRow("to the sidebar beside no list") << SidebarCategory::about << u"sidebar"_s;
}

void OverlayTest::givesTheKeyboardBack() {
    QFETCH(SidebarCategory, page);
    QFETCH(QString, focused);
    AppWindow app;
    app.showLoaded();
    fillLists(app);
    app.choose(page);
    require<OutputText>(showOverlay(app, u"one line"_s)).setFocus();
    QVERIFY(require<OutputText>(*overlay(app)).hasFocus());
    app.manager.isRunningOperation.set(false);
    QTRY_VERIFY(overlay(app) == nullptr);
    QVERIFY(QApplication::focusWidget() != nullptr);
    QCOMPARE(QApplication::focusWidget()->objectName(), focused);
    // Nobody is called from where the keyboard is.
    showOverlay(app, u"one line"_s);
    auto& button = require<QAbstractButton>(app.window, u"applicationMenuButton"_s);
    button.setFocus();
    app.manager.isRunningOperation.set(false);
    QTRY_VERIFY(overlay(app) == nullptr);
    QVERIFY(button.hasFocus());
}

void OverlayTest::keepsTheKeyboardInAnotherLanguage() {
    AppWindow app;
    app.showLoaded();
    fillLists(app);
    require<OutputText>(showOverlay(app, u"one line"_s)).setFocus();
    LangManager::shared().setCurrent(Lang::ja);
    QCoreApplication::processEvents();
    QVERIFY(QApplication::focusWidget() != nullptr);
    QVERIFY(QApplication::focusWidget()->isVisible());
    LangManager::shared().setCurrent(Lang::en);
}

LUMORA_UI_TEST_MAIN(OverlayTest)
#include "tst_overlay.moc"
