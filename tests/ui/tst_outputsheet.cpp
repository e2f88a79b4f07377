// SPDX-License-Identifier: MIT
#include "AppWindow.h"
#include "Find.h"
#include "Input.h"
#include "SheetDriver.h"
#include "UiTest.h"
#include "shell/OutputSheet.h"
#include "style/Typography.h"
#include "widgets/Labels.h"
#include "widgets/OutputText.h"
#include "widgets/SymbolLabel.h"

#include <QAction>
#include <QFontInfo>
#include <QMenu>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {

QAction& outputAction(const AppWindow& app) {
    return *app.window.applicationMenu()->findChild<QAction*>(u"outputAction"_s);
}

void tell(AppWindow& app, bool succeeded, const QString& transcript) {
    Q_EMIT app.manager.operationEnded({.succeeded = succeeded,
                                       .start = u"Upgrading wget..."_s,
                                       .closing = u"Failed to upgrade wget"_s,
                                       .transcript = transcript});
    QCoreApplication::processEvents();
}

/// The transcript that the sheet of the window shows.
OutputText& openOutput(AppWindow& app) {
    outputAction(app).trigger();
    return require<OutputText>(SheetDriver(app.window).panel());
}

QString numberedLines(int count) {
    QString lines;
    for (int i = 1; i <= count; ++i)
        lines += u"line %1\n"_s.arg(i);
    return lines;
}

} // namespace

/// The transcript of the last operation, in a sheet of its own.
class OutputSheetTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isOfferedByTheMenuOnceThereIsATranscript();
    void showsTheWholeTranscript();
    void showsHowItEnded();
    void isScrolledToItsEnd();
    void readsAsOnATerminal();
    void canBeSelected();
    void closesByItsButtonAndByEscape_data();
    void closesByItsButtonAndByEscape();
    void keepsItsSizeInTheSmallestWindow();
    void staysOpenInAnotherLanguage();
    void copesWithWhateverWasPrinted_data();
    void copesWithWhateverWasPrinted();
};

void OutputSheetTest::isOfferedByTheMenuOnceThereIsATranscript() {
    AppWindow app;
    app.showLoaded();
    QCOMPARE(outputAction(app).text(), u"Output"_s);
    QVERIFY(!outputAction(app).isEnabled());
    tell(app, true, u"Upgrading wget...\n"_s);
    QVERIFY(outputAction(app).isEnabled());
    app.manager.operationOutput.set(u"Installing jq...\n"_s);
    Q_EMIT app.manager.operationStarted(u"Installing jq..."_s);
    // The one before, as long as there is nothing of the next.
    QVERIFY(outputAction(app).isEnabled());
    QCOMPARE(openOutput(app).toPlainText(), u"Upgrading wget..."_s);
    LangManager::shared().setCurrent(Lang::ko);
    QCOMPARE(outputAction(app).text(), u"출력"_s);
    QVERIFY(outputAction(app).isEnabled());
}

void OutputSheetTest::showsTheWholeTranscript() {
    AppWindow app;
    app.showLoaded();
    app.brew.answer(u"upgrade wget"_s, "==> Pouring\n", 1, "Error: no room\n");
    const auto task = app.manager.upgrade(u"wget"_s, PackageType::formula);
    QTRY_VERIFY(task.isReady());
    QCOMPARE(openOutput(app).toPlainText(), *app.manager.operationOutput);
}

void OutputSheetTest::showsHowItEnded() {
    AppWindow app;
    app.showLoaded();
    tell(app, false, u"Upgrading wget...\nError: no\n\nFailed to upgrade wget"_s);
    openOutput(app);
    const QWidget& panel = SheetDriver(app.window).panel();
    QCOMPARE(require<ElidedLabel>(panel, u"outputTitle"_s).text(), u"Failed to upgrade wget"_s);
    QCOMPARE(require<SymbolLabel>(panel).symbol(), u"exclamationmark.triangle"_s);
    QCOMPARE(SheetDriver(app.window).sheet().accessibleName(), u"Failed to upgrade wget"_s);
    tell(app, true, u"Upgrading wget...\nDone"_s);
    openOutput(app);
    const QWidget& next = SheetDriver(app.window).panel();
    QCOMPARE(require<ElidedLabel>(next, u"outputTitle"_s).text(), u"Done"_s);
    QCOMPARE(require<SymbolLabel>(next).symbol(), u"checkmark.circle"_s);
}

void OutputSheetTest::isScrolledToItsEnd() {
    AppWindow app;
    app.showLoaded();
    tell(app, true, numberedLines(500));
    const OutputText& text = openOutput(app);
    QTRY_VERIFY(text.verticalScrollBar()->maximum() > 0);
    QTRY_COMPARE(text.verticalScrollBar()->value(), text.verticalScrollBar()->maximum());
}

void OutputSheetTest::readsAsOnATerminal() {
    AppWindow app;
    app.showLoaded();
    tell(app, true, u"\x1b[34m==>\x1b[0m a\n10%\r100%\n"_s);
    const OutputText& text = openOutput(app);
    QCOMPARE(text.toPlainText(), u"==> a\n100%"_s);
    QVERIFY(QFontInfo(text.font()).fixedPitch());
}

void OutputSheetTest::canBeSelected() {
    AppWindow app;
    app.showLoaded();
    tell(app, true, u"one\ntwo"_s);
    OutputText& text = openOutput(app);
    text.setFocus();
    Input::key(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(text.textCursor().selectedText(), u"one\u2029two"_s);
    Input::type(u"x"_s);
    QCOMPARE(text.toPlainText(), u"one\ntwo"_s);
}

void OutputSheetTest::closesByItsButtonAndByEscape_data() {
    QTest::addColumn<bool>("byButton");
    QTest::newRow("button") << true;
    QTest::newRow("Escape") << false;
}

void OutputSheetTest::closesByItsButtonAndByEscape() {
    QFETCH(const bool, byButton);
    AppWindow app;
    app.showLoaded();
    tell(app, false, u"a"_s);
    openOutput(app);
    QVERIFY(SheetDriver(app.window).button(u"closeOutput"_s).hasFocus());
    if (byButton)
        SheetDriver(app.window).press(u"closeOutput"_s);
    else
        Input::key(Qt::Key_Escape);
    QTRY_VERIFY(!SheetDriver::isOpen(app.window));
}

void OutputSheetTest::keepsItsSizeInTheSmallestWindow() {
    AppWindow app;
    app.showLoaded();
    tell(app, false, u"a"_s);
    const OutputText& text = openOutput(app);
    const QWidget& panel = SheetDriver(app.window).panel();
    QCOMPARE(panel.size(), QSize(560, 460));
    // However short the text is.
    QCOMPARE(text.width(), 560 - 2 * 23);
    QVERIFY(text.height() > 250);
    app.window.resize(700, 450);
    QTRY_COMPARE(panel.size(), QSize(560, 402));
}

void OutputSheetTest::staysOpenInAnotherLanguage() {
    AppWindow app;
    app.showLoaded();
    tell(app, false, u"a"_s);
    openOutput(app);
    LangManager::shared().setCurrent(Lang::ja);
    QTRY_VERIFY(SheetDriver::isOpen(app.window));
    QTRY_COMPARE(SheetDriver(app.window).button(u"closeOutput"_s).text(), u"閉じる"_s);
    QCOMPARE(require<OutputText>(SheetDriver(app.window).panel()).toPlainText(), u"a"_s);
}

void OutputSheetTest::copesWithWhateverWasPrinted_data() {
    QTest::addColumn<QString>("transcript");
    QTest::newRow("nothing") << u""_s;
    QTest::newRow("no line end") << u"a"_s;
    QTest::newRow("control characters") << u"a\u0000b\u0007c"_s;
    QTest::newRow("markup") << u"<h1>a</h1><script>"_s;
    QTest::newRow("right to left") << u"a\u202Eb\u2066c שלום"_s;
    QTest::newRow("megabytes of lines") << u"line\n"_s.repeated(1'000'000);
    QTest::newRow("a line of megabytes") << QString(5'000'000, u'x');
}

void OutputSheetTest::copesWithWhateverWasPrinted() {
    QFETCH(const QString, transcript);
    AppWindow app;
    app.showLoaded();
    tell(app, false, transcript);
    const OutputText& text = openOutput(app);
    QCOMPARE(text.toPlainText().isEmpty(), transcript.isEmpty());
    QVERIFY(text.toPlainText().size() < 2'200'000);
    Input::key(Qt::Key_Escape);
    QTRY_VERIFY(!SheetDriver::isOpen(app.window));
}

LUMORA_UI_TEST_MAIN(OutputSheetTest)
#include "tst_outputsheet.moc"
