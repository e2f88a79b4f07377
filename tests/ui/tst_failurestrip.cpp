// SPDX-License-Identifier: MIT
#include "AppWindow.h"
#include "Find.h"
#include "Input.h"
#include "Samples.h"
#include "UiTest.h"
#include "shell/DetailColumn.h"
#include "shell/FailureStrip.h"
#include "views/Page.h"
#include "widgets/Labels.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

/// The strip of the window, if it can be seen.
FailureStrip* strip(const AppWindow& app) {
    return findVisible<FailureStrip>(app.window);
}

void setMessage(AppWindow& app, const std::optional<QString>& message) {
    app.manager.errorMessage.set(message);
    QCoreApplication::processEvents();
}

void closeStrip(const AppWindow& app) {
    Input::click(require<QAbstractButton>(app.window, u"closeFailure"_s));
    QTRY_VERIFY(strip(app) == nullptr);
}

QRect inWindow(const QWidget& widget) {
    return {widget.mapTo(widget.window(), QPoint(0, 0)), widget.size()};
}

const QString failedFormulae = u"brew info --installed --formula failed"_s;

} // namespace

class FailureStripTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void takesNoRoomWithoutAFailure();
    void tellsOfALoadThatFailed();
    void goesAwayWithTheNextLoad();
    void liesBetweenHeaderAndContent();
    void cutsALongMessageToItsLine();
    void takesAMessageAsPlainText();
    void letsTheMessageBeSelected();
    void copiesTheWholeMessage();
    void staysClosedUntilTheMessageChanges();
    void opensAgainForTheSameFailureAnotherTime();
    void belongsToEveryPage();
    void closesWithoutChangingTheManager();
    void hasANameForItsButtonInEveryLanguage_data();
    void hasANameForItsButtonInEveryLanguage();
};

void FailureStripTest::takesNoRoomWithoutAFailure() {
    AppWindow app;
    app.showLoaded();
    QVERIFY(strip(app) == nullptr);
    const QWidget& page = *app.window.content()->detailColumn()->page();
    const QRect header = inWindow(require<PageHeader>(app.window));
    QCOMPARE(inWindow(page).top(), header.bottom() + 1);
    setMessage(app, u"Something failed"_s);
    QTRY_VERIFY(inWindow(page).top() > header.bottom() + 1);
    setMessage(app, std::nullopt);
    QTRY_COMPARE(inWindow(page).top(), header.bottom() + 1);
}

void FailureStripTest::tellsOfALoadThatFailed() {
    AppWindow app;
    app.brew.fail(ScriptedBrew::infoFormulae);
    app.showLoaded();
    QTRY_VERIFY(strip(app) != nullptr);
    QCOMPARE(strip(app)->message(), failedFormulae);
    // The list behind it looks like an empty one.
    QCOMPARE(app.page().state(), u"No formulae installed"_s);
}

void FailureStripTest::goesAwayWithTheNextLoad() {
    AppWindow app;
    app.brew.fail(ScriptedBrew::infoFormulae);
    app.showLoaded();
    QTRY_VERIFY(strip(app) != nullptr);
    app.brew.setFormulae({Samples::formula(u"wget"_s)});
    app.brew.hold(ScriptedBrew::infoFormulae);
    app.page().press(u"refreshButton"_s);
    QTRY_VERIFY(strip(app) == nullptr);
    app.brew.release(ScriptedBrew::infoFormulae);
    QTRY_COMPARE(app.page().title(), u"Formulae (1)"_s);
    QVERIFY(strip(app) == nullptr);
}

void FailureStripTest::liesBetweenHeaderAndContent() {
    AppWindow app;
    app.showLoaded();
    setMessage(app, u"Something failed"_s);
    const QRect shown = inWindow(*strip(app));
    const QRect header = inWindow(require<PageHeader>(app.window));
    const Page& page = *app.window.content()->detailColumn()->page();
    QCOMPARE(shown.top(), header.bottom() + 1);
    QTRY_COMPARE(inWindow(page).top(), shown.bottom() + 1);
    QCOMPARE(shown.width(), header.width());
    QVERIFY(shown.height() <= 40);
}

void FailureStripTest::cutsALongMessageToItsLine() {
    AppWindow app;
    app.showLoaded();
    const QString message = u"Failed to load formulae: "_s + QString(u"very long "_s).repeated(60);
    setMessage(app, message);
    const int height = strip(app)->height();
    const auto& label = require<ElidedLabel>(app.window, u"failureMessage"_s);
    QVERIFY(label.text().endsWith(u'…'));
    QVERIFY(label.fontMetrics().horizontalAdvance(label.text()) <= label.width());
    QCOMPARE(label.toolTip(), u"<qt>"_s + message + u"</qt>"_s);
    QCOMPARE(app.window.width(), 900);
    // What fits isn't said twice.
    setMessage(app, u"Short"_s);
    QCOMPARE(label.text(), u"Short"_s);
    QCOMPARE(label.toolTip(), QString());
    QCOMPARE(strip(app)->height(), height);
}

void FailureStripTest::takesAMessageAsPlainText() {
    AppWindow app;
    app.showLoaded();
    setMessage(app, u"<b>bold</b> &amp; \x1b[31mred\nsecond line"_s);
    const auto& label = require<ElidedLabel>(app.window, u"failureMessage"_s);
    QCOMPARE(label.text(), u"<b>bold</b> &amp; ␛[31mred second line"_s);
    QCOMPARE(label.textFormat(), Qt::PlainText);
    QVERIFY(strip(app)->height() <= 40);
}

void FailureStripTest::letsTheMessageBeSelected() {
    AppWindow app;
    app.showLoaded();
    setMessage(app, u"Something failed"_s);
    auto& label = require<ElidedLabel>(app.window, u"failureMessage"_s);
    Input::press(label, QPoint(1, label.height() / 2));
    Input::moveTo(label, QPoint(label.width() - 1, label.height() / 2));
    Input::release(label, QPoint(label.width() - 1, label.height() / 2));
    QCOMPARE(label.selectedText(), u"Something failed"_s);
}

void FailureStripTest::copiesTheWholeMessage() {
    AppWindow app;
    app.showLoaded();
    QString message = u"Error: "_s;
    for (int i = 0; i < 200; ++i)
        message += u"word %1 "_s.arg(i);
    setMessage(app, message);
    auto& label = require<ElidedLabel>(app.window, u"failureMessage"_s);
    QVERIFY(label.text().size() < message.size());
    label.setFocus();
    QClipboard& clipboard = *QGuiApplication::clipboard();
    clipboard.clear();
    Input::key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard.text(), QString());
    const auto copiedByMenu = [&] {
        clipboard.clear();
        Input::click(label, QPoint(10, label.height() / 2), Qt::RightButton);
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr)
            return QString();
        for (QAction* const action : menu->actions()) {
            if (action->text().contains(u"Copy"_s))
                action->trigger();
        }
        menu->close();
        return clipboard.text();
    };
    // From somewhere to where it is cut, and so to its end.
    label.setSelection(7, static_cast<int>(label.text().size()) - 7);
    Input::key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard.text(), message.mid(7));
    QCOMPARE(copiedByMenu(), message.mid(7));
    Input::click(label, QPoint(10, label.height() / 2), Qt::RightButton);
    QTRY_VERIFY(QApplication::activePopupWidget() != nullptr);
    QApplication::activePopupWidget()->actions().constLast()->trigger();
    QApplication::activePopupWidget()->close();
    Input::key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard.text(), message);
    // A part is a part.
    label.setSelection(0, 5);
    Input::key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard.text(), u"Error"_s);
    QCOMPARE(copiedByMenu(), u"Error"_s);
}

void FailureStripTest::staysClosedUntilTheMessageChanges() {
    AppWindow app;
    app.showLoaded();
    setMessage(app, u"Something failed"_s);
    closeStrip(app);
    // Neither other changes nor other pages nor another language are a new message.
    app.manager.formulae.set({Samples::formula(u"wget"_s)});
    app.choose(SidebarCategory::casks);
    QCoreApplication::processEvents();
    QVERIFY(strip(app) == nullptr);
    LangManager::shared().setCurrent(Lang::ja);
    QTRY_COMPARE(app.page().title(), u"Casks (0)"_s);
    QVERIFY(strip(app) == nullptr);
    setMessage(app, u"Something else failed"_s);
    QTRY_VERIFY(strip(app) != nullptr);
    QCOMPARE(strip(app)->message(), u"Something else failed"_s);
}

void FailureStripTest::opensAgainForTheSameFailureAnotherTime() {
    AppWindow app;
    app.brew.fail(ScriptedBrew::infoFormulae);
    app.showLoaded();
    QTRY_VERIFY(strip(app) != nullptr);
    closeStrip(app);
    app.page().press(u"refreshButton"_s);
    QTRY_VERIFY(strip(app) != nullptr);
    QCOMPARE(strip(app)->message(), failedFormulae);
}

void FailureStripTest::belongsToEveryPage() {
    AppWindow app;
    app.brew.setOutdated({Samples::outdatedCask(u"iina"_s)});
    app.brew.setTaps({u"a/b"_s});
    app.showLoaded();
    setMessage(app, u"Something failed"_s);
    for (const SidebarCategory category : allSidebarCategories) {
        app.choose(category);
        QCoreApplication::processEvents();
        QVERIFY(strip(app) != nullptr);
        QCOMPARE(strip(app)->message(), u"Something failed"_s);
    }
}

void FailureStripTest::closesWithoutChangingTheManager() {
    AppWindow app;
    app.showLoaded();
    setMessage(app, u"Something failed"_s);
    const QSignalSpy changes(&app.manager, &BrewManager::objectWillChange);
    closeStrip(app);
    QCOMPARE(changes.count(), 0);
    QCOMPARE(*app.manager.errorMessage, u"Something failed"_s);
}

void FailureStripTest::hasANameForItsButtonInEveryLanguage_data() {
    QTest::addColumn<Lang>("lang");
    QTest::addColumn<QString>("name");
    QTest::newRow("ko") << Lang::ko << u"닫기"_s;
    QTest::newRow("en") << Lang::en << u"Close"_s;
    QTest::newRow("ja") << Lang::ja << u"閉じる"_s;
}

void FailureStripTest::hasANameForItsButtonInEveryLanguage() {
    QFETCH(Lang, lang);
    QFETCH(QString, name);
    AppWindow app;
    app.showLoaded();
    setMessage(app, u"Something failed"_s);
    LangManager::shared().setCurrent(lang);
    QTRY_VERIFY(strip(app) != nullptr);
    QCOMPARE(require<QAbstractButton>(app.window, u"closeFailure"_s).accessibleName(), name);
}

LUMORA_UI_TEST_MAIN(FailureStripTest)
#include "tst_failurestrip.moc"
