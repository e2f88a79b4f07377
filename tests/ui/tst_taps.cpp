// SPDX-License-Identifier: MIT
#include "AlertDriver.h"
#include "Find.h"
#include "Input.h"
#include "LangManager.h"
#include "PageWindow.h"
#include "SheetDriver.h"
#include "UiTest.h"
#include "pages/TapsView.h"
#include "style/Metrics.h"
#include "widgets/RowListView.h"
#include "widgets/Spinner.h"

#include <QLabel>
#include <QLineEdit>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace {

const QString refresh = u"refreshButton"_s;
const QString plus = u"addTapButton"_s;
const QString add = u"confirmAddTap"_s;

struct TapsWindow final {
    explicit TapsWindow(const QStringList& taps = {u"a/b"_s, u"c/d"_s}) {
        QList<BrewTap> list;
        for (const QString& tap : taps)
            list.append({tap});
        manager.taps.set(list);
        brew.setTaps(taps);
    }

    void show() { window.show(new TapsView(manager)); }

    /// Opens the sheet by its button.
    [[nodiscard]] SheetDriver openSheet() {
        page().press(plus);
        return SheetDriver(window.column);
    }

    [[nodiscard]] bool hasSheet() const { return SheetDriver::isOpen(window.column); }

    [[nodiscard]] PageDriver page() const { return window.page(); }

    [[nodiscard]] ListDriver list() const { return window.page().list(); }

    PageWindow window;
    ScriptedBrew& brew{window.brew};
    BrewManager& manager{window.manager};
};

QLineEdit& field(const SheetDriver& sheet) {
    return require<QLineEdit>(sheet.panel(), u"tapNameField"_s);
}

/// The texts of the sheet's labels that can be seen.
QStringList labels(const SheetDriver& sheet) {
    QStringList texts;
    for (const QLabel* const label : sheet.panel().findChildren<QLabel*>()) {
        if (label->isVisible())
            texts.append(label->text());
    }
    return texts;
}

} // namespace

class TapsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void loadsOnlyWhatIsNotThere_data();
    void loadsOnlyWhatIsNotThere();
    void showsItsStatesInOrder();
    void keepsTheListWhileItIsLoadedAgain();
    void listsTheTaps();
    void namesItsControls();
    void asksForANameInASheet();
    void opensTheSheetWithAnEmptyField();
    void addsOnlyANameThatIsThere_data();
    void addsOnlyANameThatIsThere();
    void addsATap_data();
    void addsATap();
    void showsThatItIsAdding();
    void keepsTheSheetAfterAFailure();
    void closesTheSheetByCancelAndEscape();
    void closesASheetThatWasOpenedAgainMeanwhile();
    void closesTheSheetWithItsPage_data();
    void closesTheSheetWithItsPage();
    void asksBeforeItRemovesATap();
    void removesATap();
    void removesNothingWhenCancelled();
    void loadsNothingAfterAFailedRemoval();
    void speaksTheLanguage_data();
    void speaksTheLanguage();
};

void TapsTest::loadsOnlyWhatIsNotThere_data() {
    QTest::addColumn<QStringList>("taps");
    QTest::addColumn<bool>("loads");
    QTest::newRow("nothing") << QStringList{} << true;
    QTest::newRow("taps") << QStringList{u"a/b"_s} << false;
}

void TapsTest::loadsOnlyWhatIsNotThere() {
    QFETCH(QStringList, taps);
    QFETCH(bool, loads);
    TapsWindow window(taps);
    window.brew.hold(ScriptedBrew::tap);
    window.show();
    QCOMPARE(*window.manager.isLoadingTaps, loads);
    QCOMPARE(window.page().button(refresh).isEnabled(), !loads);
    window.brew.release(ScriptedBrew::tap);
    QTRY_VERIFY(!*window.manager.isLoadingTaps);
    window.window.column.hide();
    window.window.column.show();
    QVERIFY(!*window.manager.isLoadingTaps);
    QCOMPARE(window.brew.runs(), loads ? QStringList{ScriptedBrew::tap} : QStringList());
}

void TapsTest::showsItsStatesInOrder() {
    TapsWindow window{QStringList{}};
    window.brew.hold(ScriptedBrew::tap);
    window.show();
    QCOMPARE(window.page().state(), u"Loading taps..."_s);
    QVERIFY(window.page().isBusy());
    window.brew.release(ScriptedBrew::tap);
    QTRY_COMPARE(window.page().state(), u"No taps configured"_s);
    QCOMPARE(window.page().stateSymbol(), u"list.bullet"_s);
    QCOMPARE(window.page().title(), u"Taps (0)"_s);
    window.brew.setTaps({u"c/d"_s, u"a/b"_s});
    window.page().press(refresh);
    QTRY_VERIFY(window.page().hasList());
    QCOMPARE(window.page().state(), QString());
    QCOMPARE(window.page().title(), u"Taps (2)"_s);
    QCOMPARE(window.list().texts(), (QStringList{u"a/b"_s, u"c/d"_s}));
}

void TapsTest::keepsTheListWhileItIsLoadedAgain() {
    TapsWindow window;
    window.show();
    window.brew.fail(ScriptedBrew::tap);
    window.brew.hold(ScriptedBrew::tap);
    window.page().press(refresh);
    QTRY_VERIFY(!window.page().button(refresh).isEnabled());
    QVERIFY(window.page().hasList());
    window.page().press(refresh);
    window.brew.release(ScriptedBrew::tap);
    QTRY_VERIFY(window.page().button(refresh).isEnabled());
    QCOMPARE(window.list().texts(), (QStringList{u"a/b"_s, u"c/d"_s}));
    QCOMPARE(window.brew.runs(), QStringList{ScriptedBrew::tap});
}

void TapsTest::listsTheTaps() {
    TapsWindow window;
    window.show();
    const Row row = window.list().row(u"a/b"_s);
    QCOMPARE(row.title, u"a/b"_s);
    QCOMPARE(row.symbol, u"list.bullet"_s);
    QCOMPARE(row.symbolTone, Row::Tone::Accent);
    QCOMPARE(row.actions.at(0).kind, RowAction::Kind::Trash);
    QCOMPARE(row.actions.at(0).toolTip, u"Remove tap"_s);
    // There is nothing to be chosen: taps have no detail.
    window.list().click(u"a/b"_s);
    QCOMPARE(window.window.selection.selectedPackageID(), std::nullopt);
    QCOMPARE(window.list().selectedIds(), QStringList());
}

void TapsTest::namesItsControls() {
    TapsWindow window;
    window.show();
    const QAbstractButton& first = window.page().button(refresh);
    const QAbstractButton& second = window.page().button(plus);
    QCOMPARE(first.toolTip(), u"<qt>Refresh taps</qt>"_s);
    QCOMPARE(second.toolTip(), u"<qt>Add tap</qt>"_s);
    QVERIFY(first.x() < second.x());
    QVERIFY(!window.page().hasSearchField());
}

void TapsTest::asksForANameInASheet() {
    TapsWindow window;
    window.show();
    QVERIFY(!window.hasSheet());
    const SheetDriver sheet = window.openSheet();
    QCOMPARE(labels(sheet), (QStringList{u"Add Tap"_s, u"Enter the tap name (e.g., user/repo)"_s}));
    QCOMPARE(field(sheet).placeholderText(), u"user/repo"_s);
    QCOMPARE(field(sheet).width(), 300);
    QVERIFY(field(sheet).hasFocus());
    QCOMPARE(sheet.button(u"cancelAddTap"_s).text(), u"Cancel"_s);
    QCOMPARE(sheet.button(add).text(), u"Add"_s);
    QVERIFY(sheet.button(u"cancelAddTap"_s).x() < sheet.button(add).x());
    QVERIFY(!sheet.button(add).isEnabled());
    // 20 points around, 16 between the items.
    const QList<QLabel*> texts = sheet.panel().findChildren<QLabel*>();
    QCOMPARE(texts.at(0)->pos(), QPoint(20, 20));
    QCOMPARE(texts.at(1)->y(), texts.at(0)->geometry().bottom() + 1 + 16);
    QCOMPARE(field(sheet).y(), texts.at(1)->geometry().bottom() + 1 + 16);
    // Between field and buttons is the place of the row that comes while a tap is added.
    const int row = std::max(Metrics::smallSpinner, texts.at(2)->sizeHint().height());
    QCOMPARE(texts.at(2)->text(), u"Adding tap..."_s);
    QCOMPARE(sheet.button(add).y(), field(sheet).geometry().bottom() + 1 + 16 + row + 16);
    QCOMPARE(sheet.panel().height(), sheet.button(add).geometry().bottom() + 1 + 20);
    QCOMPARE(sheet.panel().width(), 300 + 2 * 20);
}

void TapsTest::opensTheSheetWithAnEmptyField() {
    TapsWindow window;
    window.show();
    field(window.openSheet()).setText(u"typed/before"_s);
    Input::key(Qt::Key_Escape);
    QTRY_VERIFY(!window.hasSheet());
    QCOMPARE(field(window.openSheet()).text(), QString());
}

void TapsTest::addsOnlyANameThatIsThere_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("canAdd");
    QTest::newRow("nothing") << u""_s << false;
    QTest::newRow("blanks") << u"   "_s << false;
    QTest::newRow("tab and no-break space") << u"\t\u00a0"_s << false;
    QTest::newRow("wide space") << u"\u3000"_s << false;
    QTest::newRow("a name") << u"user/repo"_s << true;
    QTest::newRow("anything") << u"x"_s << true;
    QTest::newRow("a name between blanks") << u"  x "_s << true;
}

void TapsTest::addsOnlyANameThatIsThere() {
    QFETCH(QString, typed);
    QFETCH(bool, canAdd);
    TapsWindow window;
    window.show();
    const SheetDriver sheet = window.openSheet();
    field(sheet).setText(typed);
    QCOMPARE(sheet.button(add).isEnabled(), canAdd);
    if (canAdd)
        return;
    Input::key(Qt::Key_Return);
    sheet.press(add);
    QVERIFY(!*window.manager.isRunningOperation);
    QVERIFY(window.hasSheet());
    QCOMPARE(window.brew.runs(), QStringList());
}

void TapsTest::addsATap_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("byReturn");
    QTest::newRow("Return") << u"user/repo"_s << true;
    QTest::newRow("button") << u"user/repo"_s << false;
    QTest::newRow("blanks around it") << u" \t user/repo\u3000"_s << true;
}

void TapsTest::addsATap() {
    QFETCH(QString, typed);
    QFETCH(bool, byReturn);
    TapsWindow window;
    window.show();
    window.brew.setTaps({u"a/b"_s, u"c/d"_s, u"user/repo"_s});
    const SheetDriver sheet = window.openSheet();
    field(sheet).setText(typed);
    if (byReturn)
        Input::key(Qt::Key_Return);
    else
        sheet.press(add);
    QTRY_VERIFY(!window.hasSheet());
    QTRY_COMPARE(window.page().title(), u"Taps (3)"_s);
    QCOMPARE(window.brew.runs(), (QStringList{u"tap user/repo"_s, ScriptedBrew::tap}));
    QCOMPARE(window.list().ids().constLast(), u"user/repo"_s);
}

void TapsTest::showsThatItIsAdding() {
    TapsWindow window;
    window.show();
    window.brew.hold(u"tap user/repo"_s);
    const SheetDriver sheet = window.openSheet();
    QVERIFY(findVisible<Spinner>(sheet.panel()) == nullptr);
    const QRect panel = sheet.panel().geometry();
    const QRect button = sheet.button(add).geometry();
    Input::type(u"user/repo"_s);
    Input::key(Qt::Key_Return);
    QTRY_VERIFY(labels(sheet).contains(u"Adding tap..."_s));
    QVERIFY(findVisible<Spinner>(sheet.panel()) != nullptr);
    // Nothing makes room for them only now.
    QCOMPARE(sheet.panel().geometry(), panel);
    QCOMPARE(sheet.button(add).geometry(), button);
    QVERIFY(!sheet.button(add).isEnabled());
    QCOMPARE(*window.manager.operationOutput, u"Adding tap user/repo...\n"_s);
    Input::key(Qt::Key_Return);
    sheet.press(add);
    window.brew.release(u"tap user/repo"_s);
    QTRY_VERIFY(!window.hasSheet());
    QTRY_VERIFY(window.brew.runs().contains(ScriptedBrew::tap));
    QCOMPARE(window.brew.runs().count(u"tap user/repo"_s), 1);
}

void TapsTest::keepsTheSheetAfterAFailure() {
    TapsWindow window;
    window.show();
    window.brew.fail(u"tap user/repo"_s);
    const SheetDriver sheet = window.openSheet();
    Input::type(u"user/repo"_s);
    Input::key(Qt::Key_Return);
    QTRY_COMPARE(window.brew.runs(), QStringList{u"tap user/repo"_s});
    QTRY_VERIFY(sheet.button(add).isEnabled());
    QCOMPARE(field(sheet).text(), u"user/repo"_s);
    QVERIFY(findVisible<Spinner>(sheet.panel()) == nullptr);
    QVERIFY(field(sheet).hasFocus());
    QVERIFY(!*window.manager.isLoadingTaps);
    // Corrected, it is added.
    Input::type(u"2"_s);
    Input::key(Qt::Key_Return);
    QTRY_VERIFY(!window.hasSheet());
    QTRY_COMPARE(window.brew.runs(),
                 (QStringList{u"tap user/repo"_s, u"tap user/repo2"_s, ScriptedBrew::tap}));
}

void TapsTest::closesTheSheetByCancelAndEscape() {
    TapsWindow window;
    window.show();
    const auto cancel = [](const SheetDriver& sheet) { sheet.press(u"cancelAddTap"_s); };
    const auto escape = [](const SheetDriver&) { Input::key(Qt::Key_Escape); };
    for (const std::function<void(const SheetDriver&)>& close :
         {std::function<void(const SheetDriver&)>(cancel), {escape}}) {
        const SheetDriver sheet = window.openSheet();
        Input::type(u"user/repo"_s);
        close(sheet);
        QTRY_VERIFY(!window.hasSheet());
    }
    QVERIFY(!*window.manager.isRunningOperation);
    QCOMPARE(window.brew.runs(), QStringList());
}

void TapsTest::closesASheetThatWasOpenedAgainMeanwhile() {
    TapsWindow window;
    window.show();
    window.brew.hold(u"tap user/repo"_s);
    (void)window.openSheet();
    Input::type(u"user/repo"_s);
    Input::key(Qt::Key_Return);
    Input::key(Qt::Key_Escape);
    QTRY_VERIFY(!window.hasSheet());
    // The add goes on, and a new sheet says so.
    const SheetDriver sheet = window.openSheet();
    QVERIFY(labels(sheet).contains(u"Adding tap..."_s));
    Input::type(u"other/repo"_s);
    QVERIFY(!sheet.button(add).isEnabled());
    window.brew.release(u"tap user/repo"_s);
    QTRY_VERIFY(!window.hasSheet());
    QTRY_COMPARE(window.brew.runs(), (QStringList{u"tap user/repo"_s, ScriptedBrew::tap}));
}

void TapsTest::closesTheSheetWithItsPage_data() {
    QTest::addColumn<bool>("isAdding");
    QTest::newRow("open") << false;
    QTest::newRow("adding") << true;
}

void TapsTest::closesTheSheetWithItsPage() {
    QFETCH(bool, isAdding);
    TapsWindow window;
    window.show();
    window.brew.hold(u"tap user/repo"_s);
    (void)window.openSheet();
    Input::type(u"user/repo"_s);
    if (isAdding)
        Input::key(Qt::Key_Return);
    QCOMPARE(*window.manager.isRunningOperation, isAdding);
    // Another page, whose own sheet knows nothing of all this.
    window.show();
    QTRY_VERIFY(!window.hasSheet());
    const SheetDriver other = window.openSheet();
    QCOMPARE(field(other).text(), QString());
    QVERIFY(!labels(other).contains(u"Adding tap..."_s));
    window.brew.release(u"tap user/repo"_s);
    QTRY_VERIFY(!*window.manager.isRunningOperation);
    QCoreApplication::processEvents();
    QVERIFY(window.hasSheet());
}

void TapsTest::asksBeforeItRemovesATap() {
    TapsWindow window;
    window.show();
    window.list().clickAction(u"c/d"_s);
    const AlertDriver alert;
    QCOMPARE(alert.title(), u"Remove Tap"_s);
    QCOMPARE(alert.message(), u"Are you sure you want to remove the tap 'c/d'?"_s);
    QStringList buttons = alert.buttons();
    buttons.sort();
    QCOMPARE(buttons, (QStringList{u"Cancel"_s, u"Remove"_s}));
    QCOMPARE(alert.defaultButton(), u"Cancel"_s);
}

void TapsTest::removesATap() {
    TapsWindow window;
    window.show();
    window.brew.setTaps({u"a/b"_s});
    window.brew.hold(u"untap c/d"_s);
    window.list().view().setFocus();
    Input::key(Qt::Key_Down);
    Input::key(Qt::Key_Delete);
    AlertDriver().press(u"Remove"_s);
    QTRY_COMPARE(*window.manager.operationOutput, u"Removing tap c/d...\n"_s);
    QCOMPARE(window.list().ids().size(), 2);
    window.brew.release(u"untap c/d"_s);
    QTRY_COMPARE(window.list().ids(), QStringList{u"a/b"_s});
    QCOMPARE(window.brew.runs(), (QStringList{u"untap c/d"_s, ScriptedBrew::tap}));
}

void TapsTest::removesNothingWhenCancelled() {
    TapsWindow window;
    window.show();
    window.list().clickAction(u"c/d"_s);
    AlertDriver().press(u"Cancel"_s);
    window.list().clickAction(u"c/d"_s);
    AlertDriver().escape();
    QVERIFY(!*window.manager.isRunningOperation);
    QCOMPARE(window.brew.runs(), QStringList());
    // The next question is about another tap.
    window.list().clickAction(u"a/b"_s);
    QCOMPARE(AlertDriver().message(), u"Are you sure you want to remove the tap 'a/b'?"_s);
}

void TapsTest::loadsNothingAfterAFailedRemoval() {
    TapsWindow window;
    window.show();
    window.brew.fail(u"untap c/d"_s);
    window.list().clickAction(u"c/d"_s);
    AlertDriver().press(u"Remove"_s);
    QTRY_COMPARE(window.brew.runs(), QStringList{u"untap c/d"_s});
    QTRY_VERIFY(!*window.manager.isRunningOperation);
    QVERIFY(!*window.manager.isLoadingTaps);
    QCOMPARE(window.list().ids().size(), 2);
}

void TapsTest::speaksTheLanguage_data() {
    QTest::addColumn<Lang>("lang");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("ko") << Lang::ko
                        << QStringList{u"tap 새로고침"_s,
                                       u"tap 추가"_s,
                                       u"Tap 추가"_s,
                                       u"tap 이름을 입력하세요 (예: user/repo)"_s,
                                       u"추가"_s,
                                       u"Tap 제거"_s,
                                       u"'a/b' tap을 제거하시겠습니까?"_s,
                                       u"제거"_s};
    QTest::newRow("ja") << Lang::ja
                        << QStringList{u"tapを更新"_s,
                                       u"tapを追加"_s,
                                       u"Tapを追加"_s,
                                       u"tap名を入力してください（例：user/repo）"_s,
                                       u"追加"_s,
                                       u"Tapを削除"_s,
                                       u"tap 'a/b'を削除しますか？"_s,
                                       u"削除"_s};
}

void TapsTest::speaksTheLanguage() {
    QFETCH(Lang, lang);
    QFETCH(QStringList, texts);
    LangManager::shared().setCurrent(lang);
    const auto restore = qScopeGuard([] { LangManager::shared().setCurrent(Lang::en); });
    TapsWindow window;
    window.show();
    QCOMPARE(window.page().button(refresh).accessibleName(), texts.at(0));
    QCOMPARE(window.page().button(plus).accessibleName(), texts.at(1));
    const SheetDriver sheet = window.openSheet();
    QCOMPARE(labels(sheet), (QStringList{texts.at(2), texts.at(3)}));
    QCOMPARE(sheet.button(add).text(), texts.at(4));
    Input::key(Qt::Key_Escape);
    QTRY_VERIFY(!window.hasSheet());
    window.list().clickAction(u"a/b"_s);
    const AlertDriver alert;
    QCOMPARE(alert.title(), texts.at(5));
    QCOMPARE(alert.message(), texts.at(6));
    QVERIFY(alert.buttons().contains(texts.at(7)));
}

LUMORA_UI_TEST_MAIN(TapsTest)
#include "tst_taps.moc"
