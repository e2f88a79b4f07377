// SPDX-License-Identifier: MIT
#include "AppWindow.h"
#include "Find.h"
#include "Focus.h"
#include "Input.h"
#include "Samples.h"
#include "SheetDriver.h"
#include "UiTest.h"
#include "shell/DetailColumn.h"
#include "shell/FailureStrip.h"
#include "shell/OperationStrip.h"
#include "views/Page.h"
#include "widgets/Labels.h"
#include "widgets/OutputText.h"
#include "widgets/Sheet.h"
#include "widgets/SymbolLabel.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString installWget = u"install wget"_s;

/// The strip of the window that can be seen, if any.
OperationStrip* strip(const AppWindow& app) {
    return findVisible<OperationStrip>(*app.window.content()->detailColumn());
}

struct StripWindow final : AppWindow {
    StripWindow() { showLoaded(); }

    /// Lets an installation of wget end in this way.
    void install(int status, const QByteArray& output = {}, const QByteArray& error = {}) {
        brew.answer(installWget, output, status, error);
        const auto task = manager.install(u"wget"_s, PackageType::formula);
        QTRY_VERIFY(task.isReady());
        // The strip gets its place.
        QCoreApplication::processEvents();
    }

    void fail() { install(1, "==> Pouring\n", "Error: no room\n"); }

    void press(const QString& objectName) const {
        Input::click(require<QAbstractButton>(window, objectName));
    }
};

/// The windows that are shown while it lives.
class ShownWindows final : public QObject {
public:
    ShownWindows() { qApp->installEventFilter(this); }

    QList<const QObject*> seen;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show && watched->isWidgetType() &&
            qobject_cast<QWidget*>(watched)->isWindow())
            seen.append(watched);
        return false;
    }
};

QTimer& timerOf(const OperationStrip& strip) {
    return *strip.findChild<QTimer*>();
}

QRect inWindow(const QWidget& widget) {
    return {widget.mapTo(widget.window(), QPoint(0, 0)), widget.size()};
}

} // namespace

/// How the window tells that an operation has ended.
class OperationStripTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { QCursor::setPos(0, 0); }

    void takesNoRoomBeforeAnOperation();
    void tellsOfAFailure();
    void tellsOfEveryOperationThatFails_data();
    void tellsOfEveryOperationThatFails();
    void tellsThatBrewCouldNotBeStarted();
    void staysUntilItIsClosed();
    void goesWithTheNextOperation();
    void tellsOfASuccessForAWhile();
    void staysWhileThePointerIsOnIt();
    void staysWhileTheKeyboardIsOnIt();
    void doesNotLetAFailureGoByItself();
    void tellsOfTwoThatOverlap_data();
    void tellsOfTwoThatOverlap();
    void liesAboveAFailedLoad();
    void staysOverPagesAndLanguages();
    void tellsOfAFailedTapInSightOfItsSheet();
    void opensTheOutputOverTheSheetAndGoesBack();
    void takesNothingForMarkup();
    void isReachedByTheKeyboard();
    void tellsAScreenReader();
    void tellsEachSheetThatIsOpen();
    void staysWhileASheetCoversIt();
    void survivesTheEndOfTheWindow();
};

void OperationStripTest::takesNoRoomBeforeAnOperation() {
    const StripWindow app;
    QVERIFY(strip(app) == nullptr);
    QCOMPARE(inWindow(*app.window.content()->detailColumn()->page()).top(),
             inWindow(require<PageHeader>(app.window)).bottom() + 1);
}

void OperationStripTest::tellsOfAFailure() {
    StripWindow app;
    app.fail();
    QVERIFY(strip(app) != nullptr);
    QCOMPARE(strip(app)->message(), u"Failed to install wget"_s);
    QCOMPARE(strip(app)->reason(), u"Error: no room"_s);
    QCOMPARE(require<SymbolLabel>(*strip(app)).symbol(), u"exclamationmark.triangle"_s);
    QVERIFY(inWindow(require<QLabel>(app.window, u"operationMessage"_s)).right() <
            inWindow(require<QLabel>(app.window, u"operationReason"_s)).left());
    QCOMPARE(require<QPushButton>(app.window, u"operationOutput"_s).text(), u"Output"_s);
    QCOMPARE(require<QAbstractButton>(app.window, u"closeOperation"_s).accessibleName(),
             u"Close"_s);
}

void OperationStripTest::tellsOfEveryOperationThatFails_data() {
    using Start = std::function<QCoro::Task<bool>(BrewManager&)>;
    QTest::addColumn<QString>("command");
    QTest::addColumn<Start>("start");
    QTest::addColumn<QString>("message");
    const auto add = [](const QString& command, Start start, const QString& message) {
        QTest::newRow(qUtf8Printable(command)) << command << std::move(start) << message;
    };
    using enum PackageType;
    add(
        u"install wget"_s, [](BrewManager& brew) { return brew.install(u"wget"_s, formula); },
        u"Failed to install wget"_s);
    add(
        u"uninstall --cask iina"_s,
        [](BrewManager& brew) { return brew.uninstall(u"iina"_s, cask); },
        u"Failed to uninstall iina"_s);
    add(
        u"upgrade wget"_s, [](BrewManager& brew) { return brew.upgrade(u"wget"_s, formula); },
        u"Failed to upgrade wget"_s);
    add(
        u"upgrade"_s, [](BrewManager& brew) { return brew.upgradeAll(); }, u"Upgrade failed"_s);
    add(
        u"tap a/b"_s, [](BrewManager& brew) { return brew.addTap(u"a/b"_s); }, u"Error: no"_s);
    add(
        u"untap a/b"_s, [](BrewManager& brew) { return brew.removeTap(u"a/b"_s); }, u"Error: no"_s);
}

void OperationStripTest::tellsOfEveryOperationThatFails() {
    using Start = std::function<QCoro::Task<bool>(BrewManager&)>;
    QFETCH(const QString, command);
    QFETCH(const Start, start);
    QFETCH(const QString, message);
    StripWindow app;
    app.brew.answer(command, {}, 1, "Error: no\n");
    const auto task = start(app.manager);
    QTRY_VERIFY(task.isReady());
    QVERIFY(strip(app) != nullptr);
    QCOMPARE(strip(app)->message(), message);
}

void OperationStripTest::tellsThatBrewCouldNotBeStarted() {
    StripWindow app;
    Q_EMIT app.manager.operationEnded({.succeeded = false,
                                       .start = u"Installing wget..."_s,
                                       .transcript = u"Installing wget...\n\nError: no shell"_s});
    QVERIFY(strip(app) != nullptr);
    QCOMPARE(strip(app)->message(), u"Error: no shell"_s);
    QCOMPARE(strip(app)->reason(), QString());
}

void OperationStripTest::staysUntilItIsClosed() {
    StripWindow app;
    app.fail();
    const QRect page = inWindow(*app.window.content()->detailColumn()->page());
    app.press(u"closeOperation"_s);
    QTRY_VERIFY(strip(app) == nullptr);
    QTRY_COMPARE(inWindow(*app.window.content()->detailColumn()->page()).top(),
                 page.top() - OperationStrip::height);
    QCOMPARE(app.brew.runs().count(installWget), 1);
}

void OperationStripTest::goesWithTheNextOperation() {
    StripWindow app;
    app.fail();
    QVERIFY(strip(app) != nullptr);
    app.brew.hold(u"upgrade"_s);
    const auto task = app.manager.upgradeAll();
    QVERIFY(strip(app) == nullptr);
    app.brew.release(u"upgrade"_s);
    QTRY_VERIFY(task.isReady());
    QCOMPARE(strip(app)->message(), u"All packages upgraded"_s);
}

void OperationStripTest::tellsOfASuccessForAWhile() {
    StripWindow app;
    app.install(0, "==> Caveats\nRead this\n");
    QVERIFY(strip(app) != nullptr);
    QCOMPARE(strip(app)->message(), u"Successfully installed wget"_s);
    QCOMPARE(require<SymbolLabel>(*strip(app)).symbol(), u"checkmark.circle"_s);
    QCOMPARE(timerOf(*strip(app)).intervalAsDuration(), 10s);
    QVERIFY(timerOf(*strip(app)).isActive());
    // Ten seconds later.
    timerOf(*strip(app)).start(0ms);
    QTRY_VERIFY(strip(app) == nullptr);
    QVERIFY(app.window.content()->notice().last().has_value());
}

void OperationStripTest::staysWhileThePointerIsOnIt() {
    StripWindow app;
    app.install(0);
    Input::moveTo(*app.window.content()->detailColumn()->page());
    Input::moveTo(require<QLabel>(app.window, u"operationMessage"_s));
    QTRY_VERIFY(!timerOf(*strip(app)).isActive());
    Input::moveTo(*app.window.content()->detailColumn()->page());
    QTRY_VERIFY(timerOf(*strip(app)).isActive());
}

void OperationStripTest::staysWhileTheKeyboardIsOnIt() {
    StripWindow app;
    app.install(0);
    require<QPushButton>(app.window, u"operationOutput"_s).setFocus();
    QTRY_VERIFY(!timerOf(*strip(app)).isActive());
    require<QAbstractButton>(app.window, u"refreshButton"_s).setFocus();
    QTRY_VERIFY(timerOf(*strip(app)).isActive());
}

void OperationStripTest::doesNotLetAFailureGoByItself() {
    StripWindow app;
    app.install(0);
    QVERIFY(timerOf(*strip(app)).isActive());
    app.fail();
    QVERIFY(!timerOf(*strip(app)).isActive());
    Input::moveTo(*strip(app));
    Input::moveTo(*app.window.content()->detailColumn()->page());
    QVERIFY(!timerOf(*strip(app)).isActive());
}

void OperationStripTest::tellsOfTwoThatOverlap_data() {
    QTest::addColumn<QStringList>("order");
    QTest::addColumn<QStringList>("messages");
    const QString failed = u"Failed to install wget"_s;
    const QString succeeded = u"All packages upgraded"_s;
    QTest::newRow("the failure first")
        << QStringList{installWget, u"upgrade"_s} << QStringList{failed, succeeded};
    QTest::newRow("the success first")
        << QStringList{u"upgrade"_s, installWget} << QStringList{succeeded, failed};
}

void OperationStripTest::tellsOfTwoThatOverlap() {
    QFETCH(const QStringList, order);
    QFETCH(const QStringList, messages);
    StripWindow app;
    app.brew.fail(installWget);
    app.brew.hold(installWget);
    app.brew.hold(u"upgrade"_s);
    const auto install = app.manager.install(u"wget"_s, PackageType::formula);
    const auto upgrade = app.manager.upgradeAll();
    for (qsizetype i = 0; i < order.size(); ++i) {
        app.brew.release(order.at(i));
        const auto message = [&app] {
            return strip(app) != nullptr ? strip(app)->message() : QString();
        };
        constexpr int patience = 30'000;
        QTRY_COMPARE_WITH_TIMEOUT(message(), messages.at(i), patience);
    }
}

void OperationStripTest::liesAboveAFailedLoad() {
    StripWindow app;
    app.fail();
    app.manager.errorMessage.set(u"Something failed"_s);
    const auto& failure = require<FailureStrip>(app.window);
    const QRect header = inWindow(require<PageHeader>(app.window));
    QCOMPARE(inWindow(*strip(app)).top(), header.bottom() + 1);
    QTRY_COMPARE(inWindow(failure).top(), inWindow(*strip(app)).bottom() + 1);
    app.press(u"closeOperation"_s);
    QTRY_COMPARE(inWindow(failure).top(), header.bottom() + 1);
    QCOMPARE(failure.message(), u"Something failed"_s);
}

void OperationStripTest::staysOverPagesAndLanguages() {
    StripWindow app;
    app.fail();
    for (const SidebarCategory category : allSidebarCategories) {
        app.choose(category);
        QVERIFY(strip(app) != nullptr);
    }
    LangManager::shared().setCurrent(Lang::ko);
    QTRY_VERIFY(strip(app) != nullptr);
    QCOMPARE(strip(app)->message(), u"Failed to install wget"_s);
    QCOMPARE(require<QPushButton>(app.window, u"operationOutput"_s).text(), u"출력"_s);
    app.press(u"closeOperation"_s);
    LangManager::shared().setCurrent(Lang::ja);
    QTRY_COMPARE(app.page().title(), u"情報"_s);
    QVERIFY(strip(app) == nullptr);
}

namespace {

/// Types a name into the sheet and lets brew refuse it.
void failToAdd(StripWindow& app, const QString& name) {
    app.choose(SidebarCategory::taps);
    app.page().press(u"addTapButton"_s);
    const SheetDriver sheet(app.window);
    require<QLineEdit>(sheet.panel(), u"tapNameField"_s).setText(name);
    app.brew.answer(u"tap "_s + name, {}, 1, "Error: Invalid tap name\n");
    sheet.press(u"confirmAddTap"_s);
    QTRY_VERIFY(findVisible<OperationStrip>(sheet.sheet()) != nullptr);
}

} // namespace

void OperationStripTest::tellsOfAFailedTapInSightOfItsSheet() {
    StripWindow app;
    const ShownWindows shownWindows;
    failToAdd(app, u"nonsense"_s);
    const SheetDriver sheet(app.window);
    const auto& told = require<OperationStrip>(sheet.sheet());
    QCOMPARE(told.message(), u"Error: Invalid tap name"_s);
    QCOMPARE(require<QLineEdit>(sheet.panel(), u"tapNameField"_s).text(), u"nonsense"_s);
    QVERIFY(inWindow(told).bottom() < inWindow(sheet.panel()).top());
    // Nor does it come as a window of its own.
    QCOMPARE(shownWindows.seen, QList<const QObject*>());
    // It can be reached, and closed, from within the sheet alone.
    QVERIFY(Focus::tabTo(u"closeOperation"_s));
    QVERIFY(told.isAncestorOf(app.window.focusWidget()));
    Input::key(Qt::Key_Space);
    QTRY_VERIFY(findVisible<OperationStrip>(app.window) == nullptr);
    QVERIFY(SheetDriver::isOpen(app.window));
}

void OperationStripTest::opensTheOutputOverTheSheetAndGoesBack() {
    StripWindow app;
    failToAdd(app, u"nonsense"_s);
    const SheetDriver adding(app.window);
    Input::click(require<QPushButton>(adding.sheet(), u"operationOutput"_s));
    const auto& text = require<OutputText>(app.window);
    QVERIFY(text.toPlainText().contains(u"Error: Invalid tap name"_s));
    Input::key(Qt::Key_Escape);
    QTRY_VERIFY(findVisible<OutputText>(app.window) == nullptr);
    QVERIFY(adding.sheet().isVisible());
    QCOMPARE(require<QLineEdit>(adding.panel(), u"tapNameField"_s).text(), u"nonsense"_s);
    Input::key(Qt::Key_Escape);
    QTRY_VERIFY(!SheetDriver::isOpen(app.window));
    // What hasn't been closed is told on.
    QVERIFY(strip(app) != nullptr);
}

void OperationStripTest::takesNothingForMarkup() {
    StripWindow app;
    app.install(1, {}, "Error: <b>bold</b> &amp; \x1b[31mred\x1b[0m\n");
    const auto& label = require<ElidedLabel>(app.window, u"operationReason"_s);
    QCOMPARE(label.text(), u"Error: <b>bold</b> &amp; red"_s);
    QCOMPARE(label.textFormat(), Qt::PlainText);
}

void OperationStripTest::isReachedByTheKeyboard() {
    StripWindow app;
    app.fail();
    QStringList order;
    for (const QWidget* const stop : Focus::stopsIn(*strip(app)))
        order.append(stop->objectName());
    QCOMPARE(order, (QStringList{u"operationOutput"_s, u"closeOperation"_s}));
    QVERIFY(Focus::tabTo(u"operationOutput"_s));
    Input::key(Qt::Key_Space);
    QTRY_VERIFY(SheetDriver::isOpen(app.window));
    Input::key(Qt::Key_Escape);
    QTRY_VERIFY(!SheetDriver::isOpen(app.window));
    QCOMPARE(app.window.focusWidget()->objectName(), u"operationOutput"_s);
}

void OperationStripTest::tellsAScreenReader() {
    StripWindow app;
    app.fail();
    QCOMPARE(strip(app)->accessibleName(), u"Failed to install wget — Error: no room"_s);
    QCOMPARE(QAccessible::queryAccessibleInterface(strip(app))->role(), QAccessible::Notification);
}

void OperationStripTest::tellsEachSheetThatIsOpen() {
    StripWindow app;
    app.install(0);
    app.choose(SidebarCategory::taps);
    app.page().press(u"addTapButton"_s);
    Sheet& adding = SheetDriver(app.window).sheet();
    app.window.content()->showOutput();
    QTRY_COMPARE(Sheet::allOver(&app.window).size(), 2);
    app.fail();
    QCOMPARE(findVisible<OperationStrip>(adding)->message(), u"Failed to install wget"_s);
    Input::key(Qt::Key_Escape);
    QTRY_COMPARE(Sheet::allOver(&app.window), QList<Sheet*>{&adding});
    QVERIFY(findVisible<OperationStrip>(adding) != nullptr);
}

void OperationStripTest::staysWhileASheetCoversIt() {
    StripWindow app;
    app.install(0);
    require<QPushButton>(app.window, u"operationOutput"_s).setFocus();
    Input::key(Qt::Key_Space);
    QTRY_VERIFY(SheetDriver::isOpen(app.window));
    QVERIFY(!timerOf(*strip(app)).isActive());
    // Closed meanwhile, as by an operation that starts: the focus needs another place.
    Q_EMIT app.manager.operationStarted(u"Installing jq..."_s);
    Input::key(Qt::Key_Escape);
    QTRY_VERIFY(!SheetDriver::isOpen(app.window));
    QVERIFY(app.window.focusWidget() != nullptr);
    QVERIFY(app.window.focusWidget()->isVisible());
}

void OperationStripTest::survivesTheEndOfTheWindow() {
    const ScriptedBrew brew;
    BrewManager manager(brew.discovery());
    {
        ContentView content(manager, LangManager::shared(), {});
        Q_EMIT manager.operationEnded(
            {.succeeded = true, .start = u"a"_s, .transcript = u"a\nb"_s});
        QVERIFY(content.notice().isOpen());
    }
    Q_EMIT manager.operationStarted(u"a"_s);
    Q_EMIT manager.operationEnded({.succeeded = false, .start = u"a"_s, .transcript = u"a\nb"_s});
}

LUMORA_UI_TEST_MAIN(OperationStripTest)
#include "tst_operationstrip.moc"
