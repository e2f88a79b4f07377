// SPDX-License-Identifier: MIT
#include "AlertDriver.h"
#include "AppScene.h"
#include "ControlTree.h"
#include "Find.h"
#include "Input.h"
#include "ProcessorTime.h"
#include "Samples.h"
#include "SheetDriver.h"
#include "UiTest.h"
#include "shell/DetailColumn.h"
#include "shell/FailureStrip.h"
#include "shell/OperationOverlay.h"
#include "shell/OperationStrip.h"
#include "widgets/DetailBadge.h"
#include "widgets/DetailRow.h"
#include "widgets/DisplayText.h"
#include "widgets/Labels.h"
#include "widgets/Links.h"
#include "widgets/OutputText.h"
#include "widgets/RowListView.h"
#include "widgets/Sheet.h"

#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QMenu>
#include <QRegularExpression>
#include <QToolTip>

using namespace Qt::StringLiterals;

using enum SidebarCategory;

namespace {

/// In milliseconds; longer, and the window seems to hang.
constexpr double longestPause = 200;

/// A text that somebody else has written, and how one line of it is to look.
struct Untrusted final {
    const char* name;
    QString text;
    QString shown;
};

QString repeated(const QString& text, qsizetype length) {
    return text.repeated(length / text.size());
}

/// Stands where a word without end may be broken.
constexpr QChar mayWrap(0x200B);

constexpr qsizetype megabyte = 1 << 20;

const QList<Untrusted>& untrustedTexts() {
    static const QList<Untrusted> texts{
        {"ampersand", u"a&b && c"_s, u"a&b && c"_s},
        {"markup", u"<b>bold</b><img src=x> &amp; <a href=\"x\">y</a>"_s,
         u"<b>bold</b><img src=x> &amp; <a href=\"x\">y</a>"_s},
        {"placeholder", u"%1 %2 %n %% %L1"_s, u"%1 %2 %n %% %L1"_s},
        {"newlines", u"one\ntwo\r\nthree\u2028four"_s, u"one two␍ three four"_s},
        {"terminal colours", u"\x1b[31mred\x1b[0m"_s, u"␛[31mred␛[0m"_s},
        {"control characters", u"a\a\b\x7f\u0085"_s, u"a␇␈␡\ufffd"_s},
        {"right to left", u"abc\u202Etxt.exe\u202C\u2066x"_s, u"abc\ufffdtxt.exe\ufffd\ufffdx"_s},
        {"quotes", u"it's \"quoted\""_s, u"it's \"quoted\""_s},
        {"a thousand characters", QString(1'000, u'w'), QString(1'000, u'w')},
        {"a megabyte", repeated(u"megabyte "_s, megabyte), {}},
    };
    return texts;
}

void addTexts() {
    QTest::addColumn<const Untrusted*>("untrusted");
    for (const Untrusted& text : untrustedTexts())
        QTest::newRow(text.name) << &text;
}

/// Does something in the window and lets it be shown; returns the processor time of this thread.
double timeToShow(AppWindow& app, const std::function<void()>& change) {
    const ProcessorTime time;
    change();
    // Rendering, layout and painting each in a turn of their own at most.
    for (int turn = 0; turn < 4; ++turn)
        QCoreApplication::processEvents();
    (void)app.window.grab();
    return time.elapsed();
}

/// Whether it was quick enough and nothing is out of place.
void verifyShown(AppWindow& app, double milliseconds) {
    QVERIFY2(milliseconds < longestPause * ProcessorTime::slowness(),
             qPrintable(u"%1 ms"_s.arg(milliseconds)));
    QTRY_COMPARE(ControlTree::sticksOut(app.window), QString());
    QCOMPARE(ControlTree::overlaps(app.window), QString());
    QCOMPARE(app.window.size(), QSize(700, 450));
}

/// Lets an operation end that says nothing else.
void tell(AppWindow& app, const QString& text) {
    Q_EMIT app.manager.operationEnded(
        {.succeeded = false, .start = text, .closing = text, .transcript = u"Error: "_s + text});
}

/// What the strip says, and whether it keeps to its line.
void verifyStrip(const QWidget& root, const Untrusted& untrusted) {
    const auto& strip = require<OperationStrip>(root);
    QCOMPARE(strip.size().height(), OperationStrip::height);
    const auto& message = require<ElidedLabel>(strip, u"operationMessage"_s);
    QVERIFY(message.text().endsWith(u'…') || message.text() == untrusted.shown);
    for (const QLabel* const label : strip.findChildren<QLabel*>())
        QCOMPARE(label->textFormat(), Qt::PlainText);
}

/// What a screen reader can't say, or says of what isn't there: the signs of markup that was made
/// for the eye, characters without a sound, and more than anybody would listen to.
QStringList unspeakable(const QStringList& texts) {
    // A title and a reason, each cut where no window could show more.
    constexpr qsizetype longest = 10'000;
    static const QRegularExpression signs(
        u"<qt>|&lt;|&gt;|&quot;|[\\x00-\\x08\\x0B-\\x1F\\x7F-\\x9F]|"
        "[\\x{202A}-\\x{202E}\\x{2066}-\\x{2069}]"_s);
    QStringList found;
    for (const QString& text : texts) {
        if (text.size() > longest || text.contains(signs))
            found.append(text.left(200));
    }
    return found;
}

QString toolTipOf(const ListDriver& list, const QPoint& place) {
    QWidget* const viewport = list.view().viewport();
    QHelpEvent event(QEvent::ToolTip, place, viewport->mapToGlobal(place));
    QApplication::sendEvent(viewport, &event);
    return QToolTip::text();
}

} // namespace

/// Names, descriptions and command output come from anywhere: they are shown as they are, harm
/// nothing and hold nothing up.
class UntrustedTextTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void staysPlainInRows_data();
    void staysPlainInRows();
    void staysPlainInAlerts_data();
    void staysPlainInAlerts();
    void staysPlainInMenus_data();
    void staysPlainInMenus();
    void staysPlainInToolTips_data();
    void staysPlainInToolTips();
    void staysPlainInTheDetail_data();
    void staysPlainInTheDetail();
    void staysPlainInOutputs_data();
    void staysPlainInOutputs();
    void staysPlainInTheOverlay_data();
    void staysPlainInTheOverlay();
    void staysPlainInTheStrip_data();
    void staysPlainInTheStrip();
    void staysPlainInTheOperationStrip_data();
    void staysPlainInTheOperationStrip();
    void staysPlainInTheStripOfASheet_data();
    void staysPlainInTheStripOfASheet();
    void staysPlainInATranscript_data();
    void staysPlainInATranscript();
    void staysPlainToAScreenReader_data();
    void staysPlainToAScreenReader();
    void reachesBrewUnchanged_data();
    void reachesBrewUnchanged();
};

void UntrustedTextTest::staysPlainInRows_data() {
    QTest::addColumn<const Untrusted*>("untrusted");
    QTest::addColumn<SidebarCategory>("category");
    for (const SidebarCategory category : {formulae, casks, updates, search, taps}) {
        for (const Untrusted& text : untrustedTexts())
            QTest::addRow("%s: %s", qUtf8Printable(rawValue(category)), text.name)
                << &text << category;
    }
}

void UntrustedTextTest::staysPlainInRows() {
    QFETCH(const Untrusted*, untrusted);
    QFETCH(SidebarCategory, category);
    AppWindow app;
    app.window.resize(700, 450);
    app.showLoaded();
    app.window.content()->setSelectedCategory(category);
    app.manager.taps.set({{u"a/b"_s}});
    app.manager.outdatedCasks.set({Samples::outdatedCask(u"iina"_s)});
    QCoreApplication::processEvents();
    const QString& text = untrusted->text;
    BrewPackage formula = Samples::outdated(Samples::dependency(text));
    formula.desc = text;
    formula.version = text;
    BrewPackage cask = Samples::cask(text, text);
    cask.version = text;
    const double time = timeToShow(app, [&] {
        app.manager.formulae.set({formula});
        app.manager.casks.set({cask});
        app.manager.outdatedFormulae.set({{text, text, text, PackageType::formula}});
        app.manager.searchResults.set({{text, PackageType::formula, false}});
        app.manager.taps.set({{text}});
    });
    verifyShown(app, time);
    const QString row = app.page().list().texts().filter(u"Formulae (1)"_s).isEmpty()
                            ? app.page().list().texts().value(0)
                            : app.page().list().texts().value(1);
    QVERIFY(row.startsWith(untrusted->shown));
}

void UntrustedTextTest::staysPlainInAlerts_data() {
    addTexts();
}

void UntrustedTextTest::staysPlainInAlerts() {
    QFETCH(const Untrusted*, untrusted);
    AppWindow app;
    app.window.resize(700, 450);
    app.showLoaded();
    app.manager.formulae.set({Samples::formula(untrusted->text)});
    QCoreApplication::processEvents();
    const ProcessorTime time;
    app.page().list().clickAction(packageID(PackageType::formula, untrusted->text));
    const AlertDriver alert;
    QVERIFY2(time.elapsed() < longestPause * ProcessorTime::slowness(),
             qPrintable(u"%1 ms"_s.arg(time.elapsed())));
    QCOMPARE(alert.title(), u"Uninstall Package"_s);
    if (!untrusted->shown.isEmpty()) {
        QString message = alert.message();
        // A question of several lines is one still.
        message.replace(u'\n', u' ').replace(u'\u2028', u' ').remove(mayWrap);
        QString shown = untrusted->shown;
        shown.replace(u"␍ "_s, u" "_s);
        QCOMPARE(message, u"Are you sure you want to uninstall %1?"_s.replace(u"%1"_s, shown));
    }
    for (const QLabel* const label : alert.card().findChildren<QLabel*>())
        QVERIFY(label->text().isEmpty() || label->textFormat() == Qt::PlainText);
    // All of it fits into the window, with the buttons.
    QVERIFY(alert.card().rect().contains(alert.card().panel()->geometry()));
    QCOMPARE(ControlTree::sticksOut(*alert.card().panel()), QString());
    alert.escape();
}

void UntrustedTextTest::staysPlainInMenus_data() {
    addTexts();
}

void UntrustedTextTest::staysPlainInMenus() {
    QFETCH(const Untrusted*, untrusted);
    AppWindow app;
    app.showLoaded();
    BrewPackage package = Samples::formula(untrusted->text);
    package.homepage.clear();
    app.manager.formulae.set({package});
    QCoreApplication::processEvents();
    QMenu& menu = app.page().list().openMenu(packageID(PackageType::formula, untrusted->text));
    QStringList entries;
    for (const QAction* const action : menu.actions())
        entries.append(action->text());
    // A menu speaks of what can be done, not of the row, which it stands beside.
    QCOMPARE(entries, (QStringList{u"Details"_s, u"Uninstall"_s}));
    menu.close();
}

void UntrustedTextTest::staysPlainInToolTips_data() {
    addTexts();
}

void UntrustedTextTest::staysPlainInToolTips() {
    QFETCH(const Untrusted*, untrusted);
    AppWindow app;
    app.showLoaded();
    // Only what is cut has one.
    const QString tail(300, u'w');
    app.manager.formulae.set({Samples::formula(u"wget"_s, untrusted->text + tail)});
    QCoreApplication::processEvents();
    const ListDriver list = app.page().list();
    const ProcessorTime time;
    const QString shown = toolTipOf(list, list.rect(u"formula-wget"_s).center());
    QVERIFY2(time.elapsed() < longestPause * ProcessorTime::slowness(),
             qPrintable(u"%1 ms"_s.arg(time.elapsed())));
    QVERIFY(shown.startsWith("<qt>"_L1));
    QVERIFY(!shown.sliced(4).chopped(5).contains(u'<'));
    if (!untrusted->shown.isEmpty())
        QCOMPARE(shown, u"<qt>"_s + untrusted->shown.toHtmlEscaped() + tail + u"</qt>"_s);
    QToolTip::hideText();
}

void UntrustedTextTest::staysPlainInTheDetail_data() {
    addTexts();
}

void UntrustedTextTest::staysPlainInTheDetail() {
    QFETCH(const Untrusted*, untrusted);
    const QString& text = untrusted->text;
    AppWindow app;
    app.window.resize(700, 450);
    app.showLoaded();
    const BrewPackage package{.name = text,
                              .fullName = text,
                              .desc = text,
                              .homepage = text,
                              .version = text,
                              .installedVersion = text,
                              .isOutdated = true,
                              .dependencies = {text, u"b"_s, text}};
    app.manager.formulae.set({package});
    QCoreApplication::processEvents();
    const double time = timeToShow(
        app, [&] { app.window.content()->selection().setSelectedPackageID(package.id()); });
    const SheetDriver sheet(app.window);
    verifyShown(app, time);
    for (const QLabel* const label : sheet.panel().findChildren<QLabel*>())
        QVERIFY(label->textFormat() == Qt::PlainText);
    if (!untrusted->shown.isEmpty()) {
        const auto& name = require<ElidedLabel>(sheet.panel(), u"detailName"_s);
        QVERIFY(name.text().endsWith(u'…') || name.text() == untrusted->shown);
        QCOMPARE(require<QLabel>(sheet.panel(), u"detailDescription"_s).text().remove(mayWrap),
                 untrusted->shown);
        const DetailRow& homepage = *sheet.panel().findChildren<DetailRow*>().constLast();
        const auto* const link = findVisible<LinkButton>(homepage);
        const auto* const label = homepage.findChild<ElidedLabel*>();
        QVERIFY(link != nullptr || label->text().endsWith(u'…') ||
                label->text() == untrusted->shown);
        QCOMPARE(link != nullptr ? link->text() : DisplayText::line(label->fullText()),
                 untrusted->shown);
    }
    for (const DetailBadge* const badge : sheet.panel().findChildren<DetailBadge*>())
        QVERIFY(badge->geometry().right() <= badge->parentWidget()->width());
}

void UntrustedTextTest::staysPlainInOutputs_data() {
    addTexts();
}

void UntrustedTextTest::staysPlainInOutputs() {
    QFETCH(const Untrusted*, untrusted);
    AppWindow app;
    app.window.resize(700, 450);
    app.brew.answer(u"cleanup -n"_s, untrusted->text.toUtf8());
    app.showLoaded();
    app.choose(settings);
    app.page().press(u"previewButton"_s);
    const auto find = [&] { return findVisible<OutputSection>(app.window, u"cleanupOutput"_s); };
    QTRY_VERIFY(find() != nullptr);
    QVERIFY(find()->text()->output() == untrusted->text);
    // Once more, now that it can be measured alone.
    OutputText& text = *find()->text();
    text.setOutput(u"short"_s);
    QCoreApplication::processEvents();
    const double time = timeToShow(app, [&] { text.setOutput(untrusted->text); });
    verifyShown(app, time);
    if (!untrusted->shown.isEmpty() && !untrusted->text.contains(u'\n'))
        QCOMPARE(text.toPlainText(), untrusted->shown);
}

void UntrustedTextTest::staysPlainInTheOverlay_data() {
    addTexts();
}

void UntrustedTextTest::staysPlainInTheOverlay() {
    QFETCH(const Untrusted*, untrusted);
    AppWindow app;
    app.window.resize(700, 450);
    app.showLoaded();
    const double time = timeToShow(app, [&] {
        app.manager.operationOutput.set(u"Installing "_s + untrusted->text + u"...\n"_s);
        app.manager.isRunningOperation.set(true);
    });
    verifyShown(app, time);
    const auto& overlay = require<OperationOverlay>(app.window);
    QVERIFY(app.window.rect().contains(overlay.geometry()));
    QVERIFY(require<OutputText>(overlay).height() <= 80);
    if (!untrusted->shown.isEmpty() && !untrusted->text.contains(u'\n'))
        QCOMPARE(require<OutputText>(overlay).toPlainText(),
                 u"Installing "_s + untrusted->shown + u"..."_s);
}

void UntrustedTextTest::staysPlainInTheStrip_data() {
    addTexts();
}

void UntrustedTextTest::staysPlainInTheStrip() {
    QFETCH(const Untrusted*, untrusted);
    AppWindow app;
    app.window.resize(700, 450);
    app.showLoaded();
    const double time = timeToShow(app, [&] { app.manager.errorMessage.set(untrusted->text); });
    verifyShown(app, time);
    const auto& label = require<ElidedLabel>(app.window, u"failureMessage"_s);
    QVERIFY(label.text().endsWith(u'…') || label.text() == untrusted->shown);
    QVERIFY(require<FailureStrip>(app.window).height() <= 40);
    // Growing and shrinking the window measures the text anew.
    const double again = timeToShow(app, [&] { app.window.resize(701, 450); });
    app.window.resize(700, 450);
    QTRY_COMPARE(app.window.width(), 700);
    verifyShown(app, again);
}

void UntrustedTextTest::staysPlainInTheOperationStrip_data() {
    addTexts();
}

void UntrustedTextTest::staysPlainInTheOperationStrip() {
    QFETCH(const Untrusted*, untrusted);
    AppWindow app;
    app.window.resize(700, 450);
    app.showLoaded();
    const double time = timeToShow(app, [&] { tell(app, untrusted->text); });
    verifyShown(app, time);
    verifyStrip(*app.window.content()->detailColumn(), *untrusted);
}

void UntrustedTextTest::staysPlainInTheStripOfASheet_data() {
    addTexts();
}

void UntrustedTextTest::staysPlainInTheStripOfASheet() {
    QFETCH(const Untrusted*, untrusted);
    AppWindow app;
    app.window.resize(700, 450);
    app.showLoaded();
    app.choose(taps);
    app.page().press(u"addTapButton"_s);
    const SheetDriver sheet(app.window);
    const double time = timeToShow(app, [&] { tell(app, untrusted->text); });
    verifyShown(app, time);
    verifyStrip(sheet.sheet(), *untrusted);
}

void UntrustedTextTest::staysPlainInATranscript_data() {
    addTexts();
}

void UntrustedTextTest::staysPlainInATranscript() {
    QFETCH(const Untrusted*, untrusted);
    AppWindow app;
    app.window.resize(700, 450);
    app.showLoaded();
    tell(app, untrusted->text);
    const double time = timeToShow(app, [&] { app.window.content()->showOutput(); });
    const SheetDriver sheet(app.window);
    verifyShown(app, time);
    for (const QLabel* const label : sheet.panel().findChildren<QLabel*>())
        QCOMPARE(label->textFormat(), Qt::PlainText);
    const auto& title = require<ElidedLabel>(sheet.panel(), u"outputTitle"_s);
    QVERIFY(title.text().endsWith(u'…') || title.text() == untrusted->shown);
    // All others are as a terminal would show them.
    if (untrusted->text == untrusted->shown)
        QVERIFY(require<OutputText>(sheet.panel()).toPlainText().contains(untrusted->shown));
}

void UntrustedTextTest::staysPlainToAScreenReader_data() {
    staysPlainInRows_data();
}

void UntrustedTextTest::staysPlainToAScreenReader() {
    QFETCH(const Untrusted*, untrusted);
    QFETCH(const SidebarCategory, category);
    const QString& text = untrusted->text;
    AppWindow app;
    app.window.resize(700, 450);
    app.showLoaded();
    BrewPackage formula = Samples::outdated(Samples::formula(text, text));
    formula.homepage = text;
    formula.dependencies = {text};
    app.manager.formulae.set({formula});
    app.manager.casks.set({Samples::cask(text, text)});
    app.manager.outdatedFormulae.set({{text, text, text, PackageType::formula}});
    app.manager.searchResults.set({{text, PackageType::formula, false}});
    app.manager.taps.set({{text}});
    app.manager.errorMessage.set(text);
    app.window.content()->setSelectedCategory(category);
    tell(app, text);
    QCoreApplication::processEvents();
    if (category == formulae) {
        app.window.content()->selection().setSelectedPackageID(formula.id());
        (void)SheetDriver(app.window);
    }
    QCOMPARE(unspeakable(ControlTree::spoken(app.window)), QStringList());
}

void UntrustedTextTest::reachesBrewUnchanged_data() {
    QTest::addColumn<const Untrusted*>("untrusted");
    for (const Untrusted& text : untrustedTexts()) {
        // No system takes a megabyte as one argument.
        if (!text.shown.isEmpty())
            QTest::newRow(text.name) << &text;
    }
}

void UntrustedTextTest::reachesBrewUnchanged() {
    QFETCH(const Untrusted*, untrusted);
    AppWindow app;
    app.showLoaded();
    app.manager.formulae.set({Samples::formula(untrusted->text)});
    QCoreApplication::processEvents();
    app.page().list().clickAction(packageID(PackageType::formula, untrusted->text));
    AlertDriver().press(u"Uninstall"_s);
    QTRY_VERIFY(app.brew.runs().contains(u"uninstall "_s + untrusted->text));
    app.waitUntilLoaded();
}

LUMORA_UI_TEST_MAIN(UntrustedTextTest)
#include "tst_untrustedtext.moc"
