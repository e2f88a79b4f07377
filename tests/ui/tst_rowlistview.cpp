// SPDX-License-Identifier: MIT
#include "Find.h"
#include "Input.h"
#include "ListDriver.h"
#include "PaintWatch.h"
#include "Pixels.h"
#include "Shown.h"
#include "UiTest.h"
#include "style/LumoraStyle.h"
#include "style/Metrics.h"
#include "style/Theme.h"
#include "widgets/RowListView.h"
#include "widgets/Spinner.h"

#include <QApplication>
#include <QMenu>
#include <QScopeGuard>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>
#include <QVBoxLayout>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

using Kind = RowAction::Kind;

/// The ids of the rows of which an action was triggered.
QStringList triggered;

RowAction action(const QString& id, Kind kind, const QString& title = u"Remove"_s) {
    const bool canTrigger = kind == Kind::Trash || kind == Kind::Button;
    return {.kind = kind,
            .title = title,
            .toolTip = title + u" it"_s,
            .onTrigger = canTrigger ? [id] { triggered.append(id); } : std::function<void()>()};
}

Row item(const QString& id, Kind kind = Kind::Trash) {
    return {.id = id,
            .title = u"name of "_s + id,
            .subtitle = u"text of "_s + id,
            .actions = {action(id, kind)}};
}

/// A row with two actions that can be triggered, and others before, between and behind them.
Row itemOfManyActions(const QString& id) {
    Row row = item(id, Kind::Badge);
    row.actions.append(action(id + u"-1"_s, Kind::Button, u"Upgrade"_s));
    row.actions.append(action({}, Kind::Spinner));
    row.actions.append(action(id + u"-2"_s, Kind::Trash));
    row.actions.append(action({}, Kind::Button, u"Pin"_s));
    row.actions.last().isEnabled = false;
    return row;
}

RowSection section(const QString& heading, const QList<Row>& rows) {
    return {.heading = heading,
            .count = static_cast<int>(rows.size()),
            .describe = [rows](int place) { return rows.at(place); },
            .records = rows.constData()};
}

constexpr int rowHeight = 48;

QString idOf(int row) {
    return u"row-%1"_s.arg(row);
}

QList<Row> items(int count) {
    QList<Row> rows;
    for (int i = 0; i < count; ++i)
        rows.append(item(idOf(i)));
    return rows;
}

/// A list in a window of its own, below a field that can have the focus instead.
struct Window final {
    explicit Window(const QList<Row>& rows,
                    RowListView::Selectable selectable = RowListView::Selectable::Yes)
        : Window(QList{section({}, rows)}, selectable) {}

    explicit Window(const QList<RowSection>& sections,
                    RowListView::Selectable selectable = RowListView::Selectable::Yes)
        : view(new RowListView(rowHeight, selectable, &host)), other(new QWidget(&host)) {
        other->setFocusPolicy(Qt::StrongFocus);
        auto* const layout = new QVBoxLayout(&host);
        layout->addWidget(other);
        layout->addWidget(view);
        view->setRows(sections);
        host.resize(400, 320);
        host.show();
        other->setFocus();
        if (!QTest::qWaitForWindowActive(&host))
            qFatal("The window doesn't become active");
    }

    void set(const QList<Row>& rows) const { view->setRows({section({}, rows)}); }

    [[nodiscard]] ListDriver list() const { return ListDriver(host); }

    QWidget host;
    RowListView* view;
    QWidget* other;
    QSignalSpy chosen{view, &RowListView::rowChosen};
};

using Step = std::function<void(const Window&)>;

} // namespace

class RowListViewTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { triggered.clear(); }

    void choosesARowByClick();
    void leavesTheOtherMouseButtonsAlone_data();
    void leavesTheOtherMouseButtonsAlone();
    void choosesNothingInAListWithoutSelection();
    void doesNothingOnAHeading();
    void runsAnActionByClick_data();
    void runsAnActionByClick();
    void runsAnActionOnlyWhereItLies();
    void forgetsAPressThatIsReleasedElsewhere();
    void movesThroughTheRowsByArrows();
    void stepsIntoTheActionAndBack();
    void asksToRemoveByTheDeleteKey_data();
    void asksToRemoveByTheDeleteKey();
    void drawsTheSelectedRowAlone();
    void offersWhatARowCanDoInAMenu_data();
    void offersWhatARowCanDoInAMenu();
    void opensTheMenuByKeyboard_data();
    void opensTheMenuByKeyboard();
    void showsTheHeadingOfTheFirstRow_data();
    void showsTheHeadingOfTheFirstRow();
    void offersEveryActionThatCanBeTriggeredInAMenu();
    void doesNothingFromAMenuWhoseRowIsGone();
    void doesWhatAMenuSaidAlthoughTheRowsHaveChanged();
    void stepsThroughSeveralActions();
    void triggersOneOfSeveralActionsByClick();
    void describesNoMoreRowsThanCanBeSeen();
    void showsOnHoverWhatIsCut_data();
    void showsOnHoverWhatIsCut();
    void explainsATagOnHover();
    void findsARowByItsFirstLetters();
    void lightsUpBelowThePointer();
    void keepsItsPlaceWhenTheRowsChange();
    void goesOnFromACurrentRowThatIsGone_data();
    void goesOnFromACurrentRowThatIsGone();
    void goesOnInTheNextSection();
    void holdsItsPlaceWhenTheCurrentRowIsGone();
    void beginsWithTheFirstRowInSight();
    void staysWithAnActionWhenOtherRowsGo();
    void takesAPressWhereItLies();
    void takesNothingBesideTheRows();
    void rendersSpinnersOnlyWhileTheyCanBeSeen();
    void paintsNothingButItsSpinnersWhileTheyTurn();
    void paintsWhatChangesAndNothingElse_data();
    void paintsWhatChangesAndNothingElse();
    void turnsItsSpinnersAsTheDesktopWishes();
};

void RowListViewTest::choosesARowByClick() {
    const Window window({item(u"a"_s), item(u"b"_s)});
    window.list().click(u"b"_s);
    QCOMPARE(window.chosen.count(), 1);
    QCOMPARE(window.chosen.constFirst().constFirst(), u"b"_s);
    QCOMPARE(triggered.size(), 0);
    QCOMPARE(window.list().currentId(), u"b"_s);
}

void RowListViewTest::leavesTheOtherMouseButtonsAlone_data() {
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::newRow("right") << Qt::RightButton;
    QTest::newRow("middle") << Qt::MiddleButton;
}

void RowListViewTest::leavesTheOtherMouseButtonsAlone() {
    QFETCH(Qt::MouseButton, button);
    const Window window({item(u"a"_s), item(u"b"_s)});
    const ListDriver list = window.list();
    const auto closeMenu = [] {
        if (QWidget* const menu = QApplication::activePopupWidget())
            menu->close();
    };
    list.click(u"b"_s, button);
    closeMenu();
    list.clickAction(u"b"_s, 0, button);
    closeMenu();
    // A menu belongs to the current row; else the focus comes to the list and with it to the first.
    QCOMPARE(list.currentId(), button == Qt::RightButton ? u"b"_s : u"a"_s);
    // Nor do they end what the left button has begun.
    Input::press(*window.view->viewport(), list.rect(u"a"_s).center());
    list.click(u"a"_s, button);
    closeMenu();
    QCOMPARE(window.chosen.count(), 0);
    QCOMPARE(triggered, QStringList());
}

void RowListViewTest::choosesNothingInAListWithoutSelection() {
    const Window window({item(u"a"_s)}, RowListView::Selectable::No);
    window.list().click(u"a"_s);
    window.view->setFocus();
    Input::key(Qt::Key_Return);
    QCOMPARE(window.chosen.count(), 0);
    window.list().clickAction(u"a"_s);
    QCOMPARE(triggered.size(), 1);
}

void RowListViewTest::doesNothingOnAHeading() {
    const Window window(QList{section(u"Formulae (1)"_s, {item(u"a"_s)})});
    const QRect heading = window.view->visualRect(window.view->model()->index(0, 0));
    Input::click(*window.view->viewport(), heading.center());
    Input::click(*window.view->viewport(), heading.center(), Qt::RightButton);
    QCOMPARE(window.chosen.count(), 0);
    QCOMPARE(QApplication::activePopupWidget(), nullptr);
    QCOMPARE(window.list().texts(), (QStringList{u"Formulae (1)"_s, u"name of a, text of a"_s}));
}

void RowListViewTest::runsAnActionByClick_data() {
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<bool>("isEnabled");
    QTest::addColumn<int>("requests");
    QTest::addColumn<int>("choices");
    QTest::newRow("trash") << Kind::Trash << true << 1 << 0;
    QTest::newRow("button") << Kind::Button << true << 1 << 0;
    QTest::newRow("disabled button") << Kind::Button << false << 0 << 0;
    QTest::newRow("spinner") << Kind::Spinner << true << 0 << 0;
    QTest::newRow("badge") << Kind::Badge << true << 0 << 1;
}

void RowListViewTest::runsAnActionByClick() {
    QFETCH(Kind, kind);
    QFETCH(bool, isEnabled);
    QFETCH(int, requests);
    QFETCH(int, choices);
    Row row = item(u"b"_s, kind);
    row.actions[0].isEnabled = isEnabled;
    const Window window({item(u"a"_s), row});
    window.list().clickAction(u"b"_s);
    QCOMPARE(triggered, requests > 0 ? QStringList{u"b"_s} : QStringList());
    QCOMPARE(window.chosen.count(), choices);
}

void RowListViewTest::runsAnActionOnlyWhereItLies() {
    const Window window({item(u"a"_s)});
    const QRect area = window.list().actionRect(u"a"_s);
    QWidget& viewport = *window.view->viewport();
    // Larger than the icon: it is to be hit without aiming.
    QVERIFY(area.width() >= 24 && area.height() >= 24);
    QVERIFY(viewport.rect().contains(area));
    for (const QPoint corner :
         {area.topLeft(), area.topRight(), area.bottomLeft(), area.bottomRight()})
        Input::click(viewport, corner);
    QCOMPARE(triggered.size(), 4);
    QCOMPARE(window.chosen.count(), 0);
    Input::click(viewport, QPoint(area.left() - 1, area.center().y()));
    QCOMPARE(triggered.size(), 4);
    QCOMPARE(window.chosen.count(), 1);
}

void RowListViewTest::forgetsAPressThatIsReleasedElsewhere() {
    const Window window({item(u"a"_s), item(u"b"_s)});
    QWidget& viewport = *window.view->viewport();
    const QPoint text = window.list().rect(u"a"_s).center();
    const QPoint action = window.list().actionRect(u"a"_s).center();
    const QPoint otherAction = window.list().actionRect(u"b"_s).center();
    for (const auto& [from, to] :
         {std::pair(action, text), std::pair(text, action), std::pair(action, otherAction)}) {
        Input::press(viewport, from);
        Input::moveTo(viewport, to);
        Input::release(viewport, to);
    }
    QCOMPARE(window.chosen.count(), 0);
    QCOMPARE(triggered.size(), 0);
}

void RowListViewTest::movesThroughTheRowsByArrows() {
    const Window window(QList{section(u"Formulae"_s, {item(u"a"_s), item(u"b"_s)}),
                              section(u"Taps"_s, {}), section(u"Casks"_s, {item(u"c"_s)})});
    Input::key(Qt::Key_Tab);
    QVERIFY(window.view->hasFocus());
    QCOMPARE(window.list().currentId(), u"a"_s);
    Input::key(Qt::Key_Down);
    QCOMPARE(window.list().currentId(), u"b"_s);
    // Over the heading.
    Input::key(Qt::Key_Down);
    QCOMPARE(window.list().currentId(), u"c"_s);
    Input::key(Qt::Key_Down);
    QCOMPARE(window.list().currentId(), u"c"_s);
    Input::key(Qt::Key_Up);
    QCOMPARE(window.list().currentId(), u"b"_s);
    Input::key(Qt::Key_Home);
    QCOMPARE(window.list().currentId(), u"a"_s);
    Input::key(Qt::Key_End);
    QCOMPARE(window.list().currentId(), u"c"_s);
    // Moving is not choosing.
    QCOMPARE(window.chosen.count(), 0);
    QCOMPARE(window.list().selectedIds(), QStringList());
    Input::key(Qt::Key_Return);
    Input::key(Qt::Key_Space);
    Input::key(Qt::Key_Enter);
    QCOMPARE(window.chosen.count(), 3);
    QCOMPARE(window.chosen.constFirst().constFirst(), u"c"_s);
}

void RowListViewTest::stepsIntoTheActionAndBack() {
    const Window window({item(u"a"_s), item(u"b"_s), item(u"c"_s, Kind::Badge)});
    Input::key(Qt::Key_Tab);
    const auto isActionCurrent = [&] {
        return window.list().state(window.list().currentId()).currentAction == 0;
    };
    Input::key(Qt::Key_Right);
    QVERIFY(isActionCurrent());
    Input::key(Qt::Key_Return);
    Input::key(Qt::Key_Space);
    QCOMPARE(triggered.size(), 2);
    QCOMPARE(window.chosen.count(), 0);
    Input::key(Qt::Key_Left);
    QVERIFY(!isActionCurrent());
    Input::key(Qt::Key_Return);
    QCOMPARE(triggered.size(), 2);
    QCOMPARE(window.chosen.count(), 1);
    // Another row is entered at its text.
    Input::key(Qt::Key_Right);
    Input::key(Qt::Key_Down);
    QVERIFY(!isActionCurrent());
    Input::key(Qt::Key_Down);
    Input::key(Qt::Key_Right);
    QVERIFY(!isActionCurrent());
}

void RowListViewTest::asksToRemoveByTheDeleteKey_data() {
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<int>("requests");
    QTest::newRow("trash") << Kind::Trash << 1;
    QTest::newRow("button") << Kind::Button << 0;
    QTest::newRow("spinner") << Kind::Spinner << 0;
    QTest::newRow("badge") << Kind::Badge << 0;
}

void RowListViewTest::asksToRemoveByTheDeleteKey() {
    QFETCH(Kind, kind);
    QFETCH(int, requests);
    const Window window({item(u"a"_s, kind)});
    Input::key(Qt::Key_Tab);
    Input::key(Qt::Key_Delete);
    QCOMPARE(triggered.size(), requests);
}

void RowListViewTest::drawsTheSelectedRowAlone() {
    Window window(items(4));
    window.view->setSelectedId(u"row-2"_s);
    QCOMPARE(window.list().selectedIds(), QStringList{u"row-2"_s});
    const auto hasHairline = [&](const QString& id) { return window.list().state(id).hasHairline; };
    // Hairlines lie between rows of which none is selected.
    QVERIFY(hasHairline(u"row-0"_s));
    QVERIFY(!hasHairline(u"row-1"_s));
    QVERIFY(!hasHairline(u"row-2"_s));
    QVERIFY(!hasHairline(u"row-3"_s));
    window.set(items(3));
    QCOMPARE(window.list().selectedIds(), QStringList{u"row-2"_s});
    window.view->setSelectedId(std::nullopt);
    QCOMPARE(window.list().selectedIds(), QStringList());
    QVERIFY(hasHairline(u"row-1"_s));
}

void RowListViewTest::offersWhatARowCanDoInAMenu_data() {
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<bool>("isSelectable");
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("package") << Kind::Trash << true << QStringList{u"Details"_s, u"Remove"_s};
    QTest::newRow("installed hit") << Kind::Badge << true << QStringList{u"Details"_s};
    QTest::newRow("tap") << Kind::Trash << false << QStringList{u"Remove"_s};
}

void RowListViewTest::offersWhatARowCanDoInAMenu() {
    QFETCH(Kind, kind);
    QFETCH(bool, isSelectable);
    QFETCH(QStringList, entries);
    const Window window({item(u"a"_s), item(u"b"_s, kind)},
                        isSelectable ? RowListView::Selectable::Yes : RowListView::Selectable::No);
    for (qsizetype i = 0; i < entries.size(); ++i) {
        const QPointer<QMenu> menu = &window.list().openMenu(u"b"_s);
        QStringList texts;
        for (const QAction* const action : menu->actions())
            texts.append(action->text());
        QCOMPARE(texts, entries);
        Input::click(*menu, menu->actionGeometry(menu->actions().at(i)).center());
        QTRY_VERIFY(!menu);
    }
    QCOMPARE(window.chosen.count(), isSelectable ? 1 : 0);
    QCOMPARE(triggered.size(), entries.contains(u"Remove"_s) ? 1 : 0);
}

void RowListViewTest::opensTheMenuByKeyboard_data() {
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("opens");
    QTest::newRow("Shift+F10") << static_cast<int>(Qt::ShiftModifier) << true;
    QTest::newRow("F10") << static_cast<int>(Qt::NoModifier) << false;
}

void RowListViewTest::opensTheMenuByKeyboard() {
    QFETCH(int, modifiers);
    QFETCH(bool, opens);
    const Window window(items(50));
    Input::key(Qt::Key_Tab);
    Input::key(Qt::Key_Down);
    // Wherever the row is by now.
    window.view->scrollToBottom();
    Input::key(Qt::Key_F10, Qt::KeyboardModifiers(modifiers));
    const QPointer<QMenu> menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QCOMPARE(menu != nullptr, opens);
    if (!opens)
        return;
    const QRect row = window.view->visualRect(window.view->currentIndex());
    QVERIFY(window.view->viewport()->rect().contains(row));
    menu->actions().constFirst()->trigger();
    menu->close();
    QTRY_VERIFY(!menu);
    QCOMPARE(window.chosen.constFirst().constFirst(), u"row-1"_s);
}

void RowListViewTest::showsTheHeadingOfTheFirstRow_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Home") << Qt::Key_Home;
    QTest::newRow("Up") << Qt::Key_Up;
    QTest::newRow("Page Up") << Qt::Key_PageUp;
}

void RowListViewTest::showsTheHeadingOfTheFirstRow() {
    QFETCH(Qt::Key, key);
    const Window window(QList{section(u"Formulae"_s, items(30))});
    Input::key(Qt::Key_Tab);
    Input::key(Qt::Key_End);
    QScrollBar* const bar = window.view->verticalScrollBar();
    QVERIFY(bar->value() > 0);
    for (int i = 0; i < 30 && window.list().currentId() != u"row-0"_s; ++i)
        Input::key(key);
    QCOMPARE(window.list().currentId(), u"row-0"_s);
    QCOMPARE(bar->value(), 0);
}

void RowListViewTest::doesNothingFromAMenuWhoseRowIsGone() {
    Window window({item(u"a"_s), item(u"b"_s)});
    const QPointer<QMenu> menu = &window.list().openMenu(u"b"_s);
    window.set({item(u"a"_s)});
    for (QAction* const action : menu->actions())
        action->trigger();
    menu->close();
    QTRY_VERIFY(!menu);
    QCOMPARE(window.chosen.count(), 0);
    QCOMPARE(triggered.size(), 0);
}

void RowListViewTest::offersEveryActionThatCanBeTriggeredInAMenu() {
    const Window window({itemOfManyActions(u"a"_s)});
    QMenu& menu = window.list().openMenu(u"a"_s);
    QStringList texts;
    for (QAction* const action : menu.actions()) {
        texts.append(action->text());
        action->trigger();
    }
    menu.close();
    QCOMPARE(texts, (QStringList{u"Details"_s, u"Upgrade"_s, u"Remove"_s}));
    QCOMPARE(window.chosen.count(), 1);
    QCOMPARE(triggered, (QStringList{u"a-1"_s, u"a-2"_s}));
}

void RowListViewTest::doesWhatAMenuSaidAlthoughTheRowsHaveChanged() {
    const Window window({item(u"a"_s), item(u"b"_s)});
    const auto triggerAll = [](const QMenu& menu) {
        for (QAction* const action : menu.actions())
            action->trigger();
    };
    QPointer<QMenu> menu = &window.list().openMenu(u"b"_s);
    // Where the row was there is another one, and before its action there is another one.
    Row changed = item(u"b"_s);
    changed.actions.prepend(action(u"other"_s, Kind::Button, u"Upgrade"_s));
    window.set({changed, item(u"c"_s), item(u"a"_s)});
    triggerAll(*menu);
    menu->close();
    QTRY_VERIFY(!menu);
    QCOMPARE(window.chosen.count(), 1);
    QCOMPARE(window.chosen.constFirst().constFirst(), u"b"_s);
    QCOMPARE(triggered, QStringList{u"b"_s});

    menu = &window.list().openMenu(u"a"_s);
    // The row is there, but has come to its end.
    Row disabled = item(u"a"_s);
    disabled.actions[0].isEnabled = false;
    window.set({disabled, item(u"b"_s), item(u"c"_s)});
    triggerAll(*menu);
    window.set({item(u"a"_s, Kind::Badge), item(u"b"_s), item(u"c"_s)});
    triggerAll(*menu);
    menu->close();
    QTRY_VERIFY(!menu);
    QCOMPARE(triggered, QStringList{u"b"_s});
}

void RowListViewTest::stepsThroughSeveralActions() {
    const Window window({itemOfManyActions(u"a"_s)});
    Input::key(Qt::Key_Tab);
    const auto currentAction = [&] { return window.list().state(u"a"_s).currentAction; };
    QCOMPARE(currentAction(), std::nullopt);
    // Only to those that can be triggered, and no further than to the last of them.
    for (const qsizetype place : {1, 3, 3}) {
        Input::key(Qt::Key_Right);
        QCOMPARE(currentAction(), place);
    }
    Input::key(Qt::Key_Return);
    Input::key(Qt::Key_Left);
    QCOMPARE(currentAction(), 1);
    Input::key(Qt::Key_Space);
    QCOMPARE(triggered, (QStringList{u"a-2"_s, u"a-1"_s}));
    Input::key(Qt::Key_Left);
    Input::key(Qt::Key_Left);
    QCOMPARE(currentAction(), std::nullopt);
    // Delete finds the trash can among them.
    Input::key(Qt::Key_Delete);
    QCOMPARE(triggered, (QStringList{u"a-2"_s, u"a-1"_s, u"a-2"_s}));
}

void RowListViewTest::triggersOneOfSeveralActionsByClick() {
    const Window window({itemOfManyActions(u"a"_s)});
    for (const qsizetype place : {0, 1, 2, 3, 4})
        window.list().clickAction(u"a"_s, place);
    QCOMPARE(triggered, (QStringList{u"a-1"_s, u"a-2"_s}));
    // The badge is none.
    QCOMPARE(window.chosen.count(), 1);
    Input::moveTo(*window.view->viewport(), window.list().actionRect(u"a"_s, 3).center());
    QCOMPARE(window.list().state(u"a"_s).hoveredAction, 3);
    Input::moveTo(*window.view->viewport(), window.list().actionRect(u"a"_s, 4).center());
    QCOMPARE(window.list().state(u"a"_s).hoveredAction, std::nullopt);
    Input::press(*window.view->viewport(), window.list().actionRect(u"a"_s, 1).center());
    QCOMPARE(window.list().state(u"a"_s).pressedAction, 1);
}

void RowListViewTest::describesNoMoreRowsThanCanBeSeen() {
    constexpr int many = 10'000;
    int described = 0;
    const auto describe = [&described](int place) {
        ++described;
        return item(u"row-%1"_s.arg(place), Kind::Button);
    };
    const RowSection formulae{u"Formulae"_s, many, describe, &formulae};
    const RowSection casks{u"Casks"_s, many, describe, &casks};
    const Window window(QList{formulae});
    const auto describedBy = [&](const std::function<void()>& change) {
        described = 0;
        change();
        QCoreApplication::processEvents();
        window.view->viewport()->repaint();
        return described;
    };
    constexpr int few = 300;
    QVERIFY(describedBy([] {}) > 0);
    QVERIFY(describedBy([&] { window.view->setRows({formulae}); }) < few);
    QVERIFY(describedBy([&] { window.view->scrollToBottom(); }) < few);
    QVERIFY(describedBy([&] { window.view->setSelectedId(u"row-9999"_s); }) < few);
    QVERIFY(describedBy([&] { window.list().view().resize(300, 200); }) < few);
    QVERIFY(describedBy([&] { window.view->setRows({formulae, casks}); }) < few);
}

void RowListViewTest::showsOnHoverWhatIsCut_data() {
    QTest::addColumn<Row>("row");
    QTest::addColumn<QString>("shown");
    const QString longText = QString(100, u'm');
    QTest::newRow("nothing") << item(u"a"_s) << QString();
    Row row = item(u"a"_s);
    row.title = longText;
    QTest::newRow("title") << row << longText;
    row.subtitle = longText + u'!';
    QTest::newRow("title and text") << row << longText + u", "_s + longText + u'!';
    row = item(u"a"_s);
    row.version = longText;
    QTest::newRow("version") << row << longText;
    row = item(u"a"_s);
    row.tags = {{longText, RowTag::Tone::Neutral}};
    QTest::newRow("title beside a tag") << row << u"name of a"_s;
    row = item(u"a"_s);
    row.subtitle = u"1.0"_s;
    row.newVersion = u"1.1"_s;
    QTest::newRow("no version of an update") << row << QString();
    row.newVersion = longText;
    QTest::newRow("new version") << row << u"1.0 → "_s + longText;
    row.subtitle = longText;
    row.newVersion = u"1.1"_s;
    QTest::newRow("old version") << row << longText + u" → 1.1"_s;
}

void RowListViewTest::showsOnHoverWhatIsCut() {
    QFETCH(Row, row);
    QFETCH(QString, shown);
    const Window window({row});
    const auto toolTipAt = [&](const QPoint& place) {
        QWidget* const viewport = window.view->viewport();
        QHelpEvent event(QEvent::ToolTip, place, viewport->mapToGlobal(place));
        QApplication::sendEvent(viewport, &event);
        return QToolTip::text();
    };
    QCOMPARE(toolTipAt(window.list().actionRect(u"a"_s).center()), u"<qt>Remove it</qt>"_s);
    const QString expected = shown.isEmpty() ? QString() : u"<qt>"_s + shown + u"</qt>"_s;
    QTRY_COMPARE(toolTipAt(window.list().rect(u"a"_s).center()), expected);
    QToolTip::hideText();
}

void RowListViewTest::explainsATagOnHover() {
    int asked = 0;
    Row row = item(u"a"_s);
    const auto explain = [&asked] {
        ++asked;
        return u"<b> & c"_s;
    };
    row.tags = {{u"quiet"_s}, {u"dependency"_s, RowTag::Tone::Neutral, explain}};
    Row longRow = item(u"b"_s);
    longRow.title = QString(2'000, u'w');
    longRow.tags = row.tags;
    const Window window({row, longRow});
    QTRY_VERIFY(window.list().rect(u"b"_s).isValid());
    QCOMPARE(asked, 0);
    const auto toolTipAt = [&](const QPoint& place) {
        QWidget* const viewport = window.view->viewport();
        QHelpEvent event(QEvent::ToolTip, place, viewport->mapToGlobal(place));
        QApplication::sendEvent(viewport, &event);
        return QToolTip::text();
    };
    const auto tag = [&](const QString& id, qsizetype place) {
        return window.view->tagRect(window.view->rows().indexOf(id), place);
    };
    const QString explanation = u"<qt>&lt;b&gt; &amp; c</qt>"_s;
    // What is drawn is what is hovered, whether the name is cut or not.
    const Theme& theme = Theme::light();
    const QImage image = window.view->viewport()->grab().toImage();
    for (const QString& id : {u"a"_s, u"b"_s}) {
        for (const qsizetype place : {0, 1}) {
            const QRect area = tag(id, place);
            QCOMPARE(Pixels::boundsOf(image.copy(area), Pixels::on(theme.content, theme.neutralTag))
                         .size(),
                     area.size());
        }
        QTRY_COMPARE(toolTipAt(tag(id, 1).center()), explanation);
        QTRY_COMPARE(toolTipAt(tag(id, 0).center()),
                     id == u"a"_s ? QString() : u"<qt>%1</qt>"_s.arg(longRow.title));
    }
    QTRY_COMPARE(toolTipAt(tag(u"a"_s, 1).topRight() + QPoint(1, 0)), QString());
    // Of no other row, and to screen readers, too.
    QCOMPARE(window.view->rows().indexOf(u"a"_s).data(Qt::AccessibleDescriptionRole).toString(),
             u"dependency: <b> & c"_s);
}

void RowListViewTest::findsARowByItsFirstLetters() {
    Row wget = item(u"b"_s);
    wget.title = u"wget"_s;
    const Window window({item(u"a"_s), wget});
    window.view->setFocus();
    Input::type(u"wg"_s);
    QCOMPARE(window.list().currentId(), u"b"_s);
    QVERIFY(window.view->hasFocus());
}

void RowListViewTest::lightsUpBelowThePointer() {
    const Window window({item(u"a"_s), item(u"b"_s)});
    const auto stateOf = [&](const QString& id) { return window.list().state(id); };
    window.list().hover(u"a"_s);
    QVERIFY(stateOf(u"a"_s).isHovered && !stateOf(u"a"_s).hoveredAction);
    QVERIFY(!stateOf(u"b"_s).isHovered);
    Input::moveTo(*window.view->viewport(), window.list().actionRect(u"b"_s).center());
    QVERIFY(!stateOf(u"a"_s).isHovered);
    QVERIFY(stateOf(u"b"_s).isHovered && stateOf(u"b"_s).hoveredAction);
    Input::moveTo(*window.other);
    QVERIFY(!stateOf(u"b"_s).isHovered && !stateOf(u"b"_s).hoveredAction);
}

void RowListViewTest::keepsItsPlaceWhenTheRowsChange() {
    Window window(items(50));
    Input::key(Qt::Key_Tab);
    for (int i = 0; i < 20; ++i)
        Input::key(Qt::Key_Down);
    QCOMPARE(window.list().currentId(), u"row-20"_s);
    const int position = window.view->verticalScrollBar()->value();
    QVERIFY(position > 0);
    window.set(items(49));
    QCOMPARE(window.view->verticalScrollBar()->value(), position);
    QCOMPARE(window.list().currentId(), u"row-20"_s);
    QVERIFY(window.view->hasFocus());
}

void RowListViewTest::goesOnFromACurrentRowThatIsGone_data() {
    QTest::addColumn<QString>("before");
    QTest::addColumn<QChar>("current");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("expected");
    QTest::newRow("to the next one") << u"abcd"_s << QChar(u'b') << u"acd"_s << u"c"_s;
    QTest::newRow("from the first") << u"abcd"_s << QChar(u'a') << u"bcd"_s << u"b"_s;
    QTest::newRow("from the last") << u"abcd"_s << QChar(u'd') << u"abc"_s << u"c"_s;
    QTest::newRow("over others") << u"abcdef"_s << QChar(u'b') << u"ae"_s << u"e"_s;
    QTest::newRow("to the last") << u"abcdef"_s << QChar(u'e') << u"bc"_s << u"c"_s;
    QTest::newRow("over new ones") << u"acd"_s << QChar(u'c') << u"abd"_s << u"d"_s;
    // Nobody knows what the next one of quite other rows would be.
    QTest::newRow("from all") << u"abc"_s << QChar(u'b') << u"xyz"_s << QString();
    QTest::newRow("to nothing") << u"abc"_s << QChar(u'b') << QString() << QString();
}

void RowListViewTest::goesOnFromACurrentRowThatIsGone() {
    QFETCH(QString, before);
    QFETCH(QChar, current);
    QFETCH(QString, after);
    QFETCH(QString, expected);
    const auto itemsOf = [](const QString& ids) {
        QList<Row> rows;
        for (const QChar id : ids)
            rows.append(item(id));
        return rows;
    };
    const Window window(itemsOf(before));
    window.list().click(current);
    window.set(itemsOf(after));
    QCOMPARE(window.list().currentId(), expected);
    Input::key(Qt::Key_Return);
    QCOMPARE(window.chosen.count(), expected.isEmpty() ? 1 : 2);
    QCOMPARE(window.chosen.constLast().constFirst(), expected.isEmpty() ? current : expected);
}

void RowListViewTest::goesOnInTheNextSection() {
    const auto of = [](const QList<Row>& formulae) {
        return QList{section(u"Formulae"_s, formulae), section(u"Casks"_s, {item(u"c"_s)})};
    };
    const Window window(of({item(u"a"_s), item(u"b"_s)}));
    window.list().click(u"b"_s);
    window.view->setRows(of({item(u"a"_s)}));
    QCOMPARE(window.list().currentId(), u"c"_s);
}

void RowListViewTest::holdsItsPlaceWhenTheCurrentRowIsGone() {
    QList<Row> rows = items(50);
    const Window window(rows);
    window.view->verticalScrollBar()->setValue(485);
    const QModelIndex index = window.view->indexAt(QPoint(90, 100));
    const QString id = window.view->rows().row(index).id;
    const QString next = window.view->rows().row(index.siblingAtRow(index.row() + 1)).id;
    Input::click(*window.view->viewport(), window.view->actionRect(index).center());
    QCOMPARE(triggered, QStringList{id});
    // An alert asks, and the list is another one when it gives the focus back.
    window.other->setFocus();
    rows.removeAt(index.row());
    window.set(rows);
    window.view->setFocus();
    QCOMPARE(window.list().currentId(), next);
    QCOMPARE(window.view->verticalScrollBar()->value(), 485);
}

void RowListViewTest::beginsWithTheFirstRowInSight() {
    const Window window(items(50));
    window.view->verticalScrollBar()->setValue(480);
    Input::key(Qt::Key_Tab);
    QCOMPARE(window.list().currentId(), u"row-10"_s);
    QCOMPARE(window.view->verticalScrollBar()->value(), 480);
}

void RowListViewTest::staysWithAnActionWhenOtherRowsGo() {
    const Window window({item(u"a"_s), item(u"b"_s)});
    window.list().click(u"b"_s);
    Input::key(Qt::Key_Right);
    window.set({item(u"b"_s)});
    QCOMPARE(window.list().state(u"b"_s).currentAction, 0);
    // That of a row is not that of the next one.
    window.set({item(u"b"_s), item(u"c"_s)});
    window.set({item(u"c"_s)});
    QCOMPARE(window.list().currentId(), u"c"_s);
    QCOMPARE(window.list().state(u"c"_s).currentAction, std::nullopt);
}

void RowListViewTest::takesAPressWhereItLies() {
    const Window window(items(50));
    const QModelIndex index = window.view->indexAt(QPoint(90, window.view->viewport()->height()));
    QScrollBar* const bar = window.view->verticalScrollBar();
    // Two thirds of the row can be seen.
    bar->setValue(window.view->visualRect(index).top() + 32 - window.view->viewport()->height());
    const int position = bar->value();
    const QRect row = window.view->visualRect(index);
    QVERIFY(row.bottom() > window.view->viewport()->rect().bottom());
    const QString id = window.view->rows().row(index).id;
    Input::click(*window.view->viewport(), window.view->actionRect(index).center());
    QCOMPARE(triggered, QStringList{id});
    QCOMPARE(bar->value(), position);
    Input::click(*window.view->viewport(), QPoint(90, row.center().y()));
    QCOMPARE(window.chosen.count(), 1);
    QCOMPARE(window.chosen.constFirst().constFirst(), id);
    QCOMPARE(bar->value(), position);
}

void RowListViewTest::takesNothingBesideTheRows() {
    Window window({item(u"a"_s), item(u"b"_s)});
    window.host.resize(1'600, 320);
    QTRY_VERIFY(window.view->viewport()->width() > 1'500);
    const ListDriver list = window.list();
    window.view->setSelectedId(u"b"_s);
    const QRect row = list.rect(u"b"_s);
    const QColor fill = Pixels::on(Theme::light().content, Theme::light().selection);
    const QRect painted = Pixels::boundsOf(window.view->viewport()->grab(row).toImage(), fill)
                              .translated(row.topLeft());
    QVERIFY(painted.width() > 800 && painted.width() <= 880);
    QWidget& viewport = *window.view->viewport();
    const int middle = row.center().y();
    for (const int x : {row.left() + 1, painted.left() - 1, painted.right() + 1, row.right() - 1}) {
        const QPoint beside(x, middle);
        Input::moveTo(viewport, beside);
        QVERIFY(!list.state(u"b"_s).isHovered);
        Input::click(viewport, beside);
        Input::click(viewport, beside, Qt::RightButton);
        QVERIFY(QApplication::activePopupWidget() == nullptr);
    }
    QCOMPARE(window.chosen.count(), 0);
    for (const int x : {painted.left(), painted.right()}) {
        Input::moveTo(viewport, QPoint(x, middle));
        QVERIFY(list.state(u"b"_s).isHovered);
        Input::click(viewport, QPoint(x, middle));
    }
    QCOMPARE(window.chosen.count(), 2);
}

void RowListViewTest::rendersSpinnersOnlyWhileTheyCanBeSeen() {
    QList<Row> rows = items(40);
    rows[0] = item(u"row-0"_s, Kind::Spinner);
    Window window(rows);
    const PaintWatch paints(*window.view->viewport());
    constexpr int patience = 10'000;
    const auto turnsWithin = [&](int time) {
        const int before = paints.count();
        return QTest::qWaitFor([&] { return paints.count() > before + 1; }, time);
    };
    const auto comesToRest = [&] {
        const int severalFrames = 6 * Spinner::interval(window.view);
        return QTest::qWaitFor([&] { return !turnsWithin(severalFrames); }, patience);
    };
    QVERIFY(turnsWithin(patience));
    window.view->scrollToBottom();
    QVERIFY(comesToRest());
    window.view->scrollToTop();
    QVERIFY(turnsWithin(patience));
    window.set(items(40));
    QVERIFY(comesToRest());
}

void RowListViewTest::paintsNothingButItsSpinnersWhileTheyTurn() {
    QList<Row> rows = items(40);
    rows[1] = item(u"row-1"_s, Kind::Spinner);
    rows[2] = item(u"row-2"_s, Kind::Spinner);
    const Window window(rows);
    const ListDriver list = window.list();
    const QRect spinners = list.actionRect(u"row-1"_s) | list.actionRect(u"row-2"_s);
    QCOMPARE(spinners.width(), Metrics::smallSpinner);
    const QWidget& viewport = *window.view->viewport();
    PaintWatch paints(viewport);
    // The first frames have all of the window.
    QTRY_VERIFY(paints.count() > 1);
    paints.forget();
    QTRY_VERIFY(paints.count() > 2);
    QCOMPARE(paints.area(), spinners.translated(viewport.mapTo(&window.host, QPoint())));
}

void RowListViewTest::paintsWhatChangesAndNothingElse_data() {
    QTest::addColumn<Step>("before");
    QTest::addColumn<Step>("step");
    QTest::addColumn<int>("rows");
    const Step nothing = [](const Window&) {};
    const auto hover = [](int row) {
        return Step([row](const Window& window) { window.list().hover(idOf(row)); });
    };
    const auto type = [](Qt::Key key) { return Step([key](const Window&) { Input::key(key); }); };
    const auto select = [](std::optional<QString> id) {
        return Step([id](const Window& window) { window.view->setSelectedId(id); });
    };
    const auto at = [](void (*act)(const QWidget&, std::optional<QPoint>)) {
        return Step([act](const Window& window) {
            act(*window.view->viewport(), window.list().actionRect(idOf(0)).center());
        });
    };
    const Step reach = [at](const Window& window) {
        window.view->setFocus();
        at(Input::moveTo)(window);
    };
    const Step press = [at, reach](const Window& window) {
        reach(window);
        at(Input::press)(window);
    };
    QTest::newRow("the pointer comes") << nothing << hover(2) << 1;
    QTest::newRow("the pointer moves on") << hover(2) << hover(3) << 2;
    QTest::newRow("the pointer reaches an action") << hover(0) << at(Input::moveTo) << 1;
    QTest::newRow("the pointer leaves")
        << hover(2) << Step([](const Window& window) { Input::moveTo(*window.other); }) << 1;
    QTest::newRow("the keyboard moves on") << type(Qt::Key_Tab) << type(Qt::Key_Down) << 2;
    QTest::newRow("the keyboard reaches an action")
        << type(Qt::Key_Tab) << type(Qt::Key_Right) << 1;
    QTest::newRow("the keyboard leaves") << type(Qt::Key_Tab) << type(Qt::Key_Backtab) << 1;
    // The line above goes with it.
    QTest::newRow("a row is selected") << nothing << select(idOf(2)) << 2;
    QTest::newRow("the next is") << select(idOf(2)) << select(idOf(3)) << 3;
    QTest::newRow("none is") << select(idOf(2)) << select(std::nullopt) << 2;
    QTest::newRow("an action is pressed") << reach << at(Input::press) << 1;
    QTest::newRow("it is let go") << press << at(Input::release) << 1;
}

void RowListViewTest::paintsWhatChangesAndNothingElse() {
    QFETCH(Step, before);
    QFETCH(Step, step);
    QFETCH(int, rows);
    const Window window(items(4));
    const QWidget& viewport = *window.view->viewport();
    const auto letGo = qScopeGuard([&viewport] {
        if (QGuiApplication::mouseButtons() != Qt::NoButton)
            Input::release(viewport);
    });
    PaintWatch paints(viewport);
    // Until nothing that was asked for is left to be painted.
    const auto settle = [] {
        PaintWatch more(*QApplication::activeWindow());
        do {
            more.forget();
            QApplication::processEvents();
        } while (!more.area().isEmpty());
    };
    settle();
    before(window);
    settle();
    const QImage shownBefore = shown(window.host);
    paints.forget();
    step(window);
    QTRY_VERIFY(paints.count() > 0);
    settle();
    const int painted = paints.ownArea().height();
    constexpr int edges = 2;
    QVERIFY2(painted <= rows * rowHeight + edges, qPrintable(QString::number(painted)));
    const QImage shownNow = shown(window.host);
    QVERIFY(shownNow != shownBefore);
    window.view->viewport()->update();
    settle();
    QCOMPARE(shown(window.host), shownNow);
}

void RowListViewTest::turnsItsSpinnersAsTheDesktopWishes() {
    auto& style = dynamic_cast<LumoraStyle&>(*QApplication::style());
    const auto restore = qScopeGuard([&style] { style.setMotion(LumoraStyle::Motion::Usual); });
    style.setMotion(LumoraStyle::Motion::Reduced);
    const Window window({item(u"a"_s, Kind::Spinner)});
    const PaintWatch paints(*window.view->viewport());
    QTRY_VERIFY(paints.count() > 0);
    style.setMotion(LumoraStyle::Motion::Usual);
    // In one of the calm kind's seconds there is room for many.
    const auto isInMotion = [&] {
        const int before = paints.count();
        return QTest::qWaitFor([&] { return paints.count() > before + 2; }, 1'000);
    };
    constexpr int patience = 10'000;
    QVERIFY(QTest::qWaitFor(isInMotion, patience));
    style.setMotion(LumoraStyle::Motion::Reduced);
    QVERIFY(QTest::qWaitFor([&] { return !isInMotion(); }, patience));
}

LUMORA_UI_TEST_MAIN(RowListViewTest)
#include "tst_rowlistview.moc"
