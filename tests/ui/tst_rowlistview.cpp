// SPDX-License-Identifier: MIT
#include "Find.h"
#include "Input.h"
#include "ListDriver.h"
#include "UiTest.h"
#include "widgets/RowListView.h"

#include <QApplication>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

using Kind = RowAction::Kind;

Row item(const QString& id, Kind kind = Kind::Trash) {
    return {.id = id,
            .title = u"name of "_s + id,
            .subtitle = u"text of "_s + id,
            .action = {.kind = kind, .title = u"Remove"_s, .toolTip = u"Remove it"_s}};
}

Row section(const QString& title) {
    return {.kind = Row::Kind::Section, .title = title};
}

QList<Row> items(int count) {
    QList<Row> rows;
    for (int i = 0; i < count; ++i)
        rows.append(item(u"row-%1"_s.arg(i)));
    return rows;
}

/// A list in a window of its own, below a field that can have the focus instead.
struct Window final {
    explicit Window(const QList<Row>& rows,
                    RowListView::Selectable selectable = RowListView::Selectable::Yes)
        : view(new RowListView(48, selectable, &host)), other(new QWidget(&host)) {
        other->setFocusPolicy(Qt::StrongFocus);
        auto* const layout = new QVBoxLayout(&host);
        layout->addWidget(other);
        layout->addWidget(view);
        set(rows);
        host.resize(400, 320);
        host.show();
        other->setFocus();
        if (!QTest::qWaitForWindowActive(&host))
            qFatal("The window doesn't become active");
    }

    void set(const QList<Row>& rows) {
        view->setRows(static_cast<int>(rows.size()), [rows](int row) { return rows.at(row); });
    }

    [[nodiscard]] ListDriver list() const { return ListDriver(host); }

    QWidget host;
    RowListView* view;
    QWidget* other;
    QSignalSpy chosen{view, &RowListView::rowChosen};
    QSignalSpy requested{view, &RowListView::actionRequested};
};

/// Counts how often a widget is painted.
class PaintCounter final : public QObject {
public:
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }

    [[nodiscard]] int count() const { return m_count; }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

private:
    int m_count{};
};

} // namespace

class RowListViewTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void choosesARowByClick();
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
    void doesNothingFromAMenuWhoseRowIsGone();
    void showsTheWholeTextOnHover();
    void lightsUpBelowThePointer();
    void keepsItsPlaceWhenTheRowsChange();
    void doesWithoutACurrentRowThatIsGone();
    void rendersSpinnersOnlyWhileTheyCanBeSeen();
};

void RowListViewTest::choosesARowByClick() {
    const Window window({item(u"a"_s), item(u"b"_s)});
    window.list().click(u"b"_s);
    QCOMPARE(window.chosen.count(), 1);
    QCOMPARE(window.chosen.constFirst().constFirst(), u"b"_s);
    QCOMPARE(window.requested.count(), 0);
    QCOMPARE(window.list().currentId(), u"b"_s);
}

void RowListViewTest::choosesNothingInAListWithoutSelection() {
    const Window window({item(u"a"_s)}, RowListView::Selectable::No);
    window.list().click(u"a"_s);
    window.view->setFocus();
    Input::key(Qt::Key_Return);
    QCOMPARE(window.chosen.count(), 0);
    window.list().clickAction(u"a"_s);
    QCOMPARE(window.requested.count(), 1);
}

void RowListViewTest::doesNothingOnAHeading() {
    const Window window({section(u"Formulae (1)"_s), item(u"a"_s)});
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
    QTest::newRow("badge") << Kind::Badge << true << 0 << 0;
}

void RowListViewTest::runsAnActionByClick() {
    QFETCH(Kind, kind);
    QFETCH(bool, isEnabled);
    QFETCH(int, requests);
    QFETCH(int, choices);
    Row row = item(u"b"_s, kind);
    row.action.isEnabled = isEnabled;
    const Window window({item(u"a"_s), row});
    window.list().clickAction(u"b"_s);
    QCOMPARE(window.requested.count(), requests);
    QCOMPARE(window.chosen.count(), choices);
    if (requests > 0)
        QCOMPARE(window.requested.constFirst().constFirst(), 1);
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
    QCOMPARE(window.requested.count(), 4);
    QCOMPARE(window.chosen.count(), 0);
    Input::click(viewport, QPoint(area.left() - 1, area.center().y()));
    QCOMPARE(window.requested.count(), 4);
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
    QCOMPARE(window.requested.count(), 0);
}

void RowListViewTest::movesThroughTheRowsByArrows() {
    const Window window(
        {section(u"Formulae"_s), item(u"a"_s), item(u"b"_s), section(u"Casks"_s), item(u"c"_s)});
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
        const QModelIndex current = window.view->currentIndex();
        return window.view->stateOf(current, window.view->rows().row(current)).isActionCurrent;
    };
    Input::key(Qt::Key_Right);
    QVERIFY(isActionCurrent());
    Input::key(Qt::Key_Return);
    Input::key(Qt::Key_Space);
    QCOMPARE(window.requested.count(), 2);
    QCOMPARE(window.chosen.count(), 0);
    Input::key(Qt::Key_Left);
    QVERIFY(!isActionCurrent());
    Input::key(Qt::Key_Return);
    QCOMPARE(window.requested.count(), 2);
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
    QCOMPARE(window.requested.count(), requests);
}

void RowListViewTest::drawsTheSelectedRowAlone() {
    Window window(items(4));
    window.view->setSelectedId(u"row-2"_s);
    QCOMPARE(window.list().selectedIds(), QStringList{u"row-2"_s});
    const auto hasHairline = [&](const QString& id) {
        const QModelIndex index = window.view->rows().indexOf(id);
        return window.view->stateOf(index, window.view->rows().row(index)).hasHairline;
    };
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
    QCOMPARE(window.requested.count(), entries.contains(u"Remove"_s) ? 1 : 0);
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
    QCOMPARE(window.requested.count(), 0);
}

void RowListViewTest::showsTheWholeTextOnHover() {
    const Window window({item(u"a"_s)});
    const auto toolTipAt = [&](const QPoint& place) {
        QWidget* const viewport = window.view->viewport();
        QHelpEvent event(QEvent::ToolTip, place, viewport->mapToGlobal(place));
        QApplication::sendEvent(viewport, &event);
        return QToolTip::text();
    };
    QCOMPARE(toolTipAt(window.list().rect(u"a"_s).center()), u"<qt>text of a</qt>"_s);
    QCOMPARE(toolTipAt(window.list().actionRect(u"a"_s).center()), u"<qt>Remove it</qt>"_s);
    QToolTip::hideText();
}

void RowListViewTest::lightsUpBelowThePointer() {
    const Window window({item(u"a"_s), item(u"b"_s)});
    const auto stateOf = [&](const QString& id) {
        const QModelIndex index = window.view->rows().indexOf(id);
        return window.view->stateOf(index, window.view->rows().row(index));
    };
    window.list().hover(u"a"_s);
    QVERIFY(stateOf(u"a"_s).isHovered && !stateOf(u"a"_s).isActionHovered);
    QVERIFY(!stateOf(u"b"_s).isHovered);
    Input::moveTo(*window.view->viewport(), window.list().actionRect(u"b"_s).center());
    QVERIFY(!stateOf(u"a"_s).isHovered);
    QVERIFY(stateOf(u"b"_s).isHovered && stateOf(u"b"_s).isActionHovered);
    Input::moveTo(*window.other);
    QVERIFY(!stateOf(u"b"_s).isHovered && !stateOf(u"b"_s).isActionHovered);
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

void RowListViewTest::doesWithoutACurrentRowThatIsGone() {
    Window window({item(u"a"_s), item(u"b"_s)});
    window.list().click(u"b"_s);
    window.set({item(u"a"_s), item(u"c"_s)});
    QCOMPARE(window.list().currentId(), QString());
    window.view->setFocus();
    Input::key(Qt::Key_Return);
    Input::key(Qt::Key_Delete);
    QCOMPARE(window.chosen.count(), 1);
    QCOMPARE(window.requested.count(), 0);
    Input::key(Qt::Key_Down);
    QCOMPARE(window.list().currentId(), u"a"_s);
}

void RowListViewTest::rendersSpinnersOnlyWhileTheyCanBeSeen() {
    QList<Row> rows = items(40);
    rows[0] = item(u"row-0"_s, Kind::Spinner);
    Window window(rows);
    const PaintCounter paints(window.view->viewport());
    const auto isTurning = [&] {
        const int before = paints.count();
        return QTest::qWaitFor([&] { return paints.count() > before + 1; }, 1'000);
    };
    QVERIFY(isTurning());
    window.view->scrollToBottom();
    QTRY_VERIFY(!isTurning());
    window.view->scrollToTop();
    QVERIFY(isTurning());
    window.set(items(40));
    QTRY_VERIFY(!isTurning());
}

LUMORA_UI_TEST_MAIN(RowListViewTest)
#include "tst_rowlistview.moc"
