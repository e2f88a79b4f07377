// SPDX-License-Identifier: MIT
#include "AlertDriver.h"
#include "ControlTree.h"
#include "Find.h"
#include "Focus.h"
#include "Input.h"
#include "UiTest.h"
#include "widgets/AlertBox.h"
#include "widgets/PushButton.h"
#include "widgets/ScrollPane.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QScrollBar>
#include <QTextLayout>

#include <optional>

using namespace Qt::StringLiterals;

class AlertTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void liesInTheMiddleOfItsWindow();
    void isAsWideAsItsNamesNeed_data();
    void isAsWideAsItsNamesNeed();
    void breaksWhatNoLineCouldHold();
    void scrollsWhatIsTooLong();
    void startsWithTheSafeAnswer();
    void answersByKey_data();
    void answersByKey();
    void staysOpenAtAPressBesideIt();
    void takesNoPressOfADoubleClick();
    void givesTheFocusBack();
    void isAnAlertToScreenReaders();
    void goesWithWhatAsked();
    void asksByABoxAsWell_data();
    void asksByABoxAsWell();

private:
    void ask(const QString& message = u"Are you sure?"_s);

    std::optional<QWidget> m_window;
    QLineEdit* m_field{};
    QWidget* m_asking{};
    QStringList m_calls;
};

namespace {

/// The lines of a label as it shows them.
QStringList linesOf(const QLabel& label) {
    QTextLayout layout(label.text(), label.font());
    layout.beginLayout();
    QStringList lines;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(label.width());
        lines.append(label.text()
                         .mid(line.textStart(), line.textLength())
                         .remove(u'\u2060')
                         .remove(u'\u200B')
                         .trimmed());
    }
    layout.endLayout();
    return lines;
}

} // namespace

void AlertTest::init() {
    m_calls.clear();
    m_window.emplace();
    m_window->resize(700, 450);
    m_field = new QLineEdit(&*m_window);
    m_asking = new QWidget(&*m_window);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(&*m_window));
}

void AlertTest::ask(const QString& message) {
    Alert::confirm(
        m_asking,
        {.title = u"Uninstall Package"_s,
         .message = message,
         .destructive = u"Uninstall"_s,
         .cancel = u"Cancel"_s},
        [this] { m_calls.append(u"go ahead"_s); }, [this] { m_calls.append(u"closed"_s); });
}

void AlertTest::liesInTheMiddleOfItsWindow() {
    ask();
    const AlertDriver alert;
    QCOMPARE(alert.card().geometry(), m_window->rect());
    QCOMPARE(alert.card().panel()->width(), 360);
    QCOMPARE(alert.card().panel()->geometry().center(), m_window->rect().center());
    QCOMPARE(alert.buttons(), (QStringList{u"Cancel"_s, u"Uninstall"_s}));
    m_window->resize(900, 600);
    QTRY_COMPARE(alert.card().panel()->geometry().center(), m_window->rect().center());
    QCOMPARE(ControlTree::sticksOut(alert.card()), QString());
    QCOMPARE(ControlTree::clippedTexts(alert.card()), QString());
}

void AlertTest::isAsWideAsItsNamesNeed_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isWider");
    QTest::newRow("hyphen") << u"ca-certificates"_s << false;
    QTest::newRow("slash") << u"somebody/somewhere"_s << false;
    QTest::newRow("long") << u"font-noto-sans-inscriptional-pahlavi-and-more"_s << true;
    QTest::newRow("versioned") << u"openssl@3.13-rc.1"_s << false;
}

void AlertTest::isAsWideAsItsNamesNeed() {
    QFETCH(const QString, name);
    QFETCH(const bool, isWider);
    for (const QString& sentence :
         {u"Are you sure you want to uninstall %1?"_s, u"'%1' tap을 제거하시겠습니까?"_s,
          u"%1をアンインストールしますか？"_s}) {
        ask(QString(sentence).replace(u"%1"_s, name));
        const AlertDriver alert;
        const QStringList lines = linesOf(require<QLabel>(alert.card(), u"alertMessage"_s));
        QVERIFY2(
            std::ranges::any_of(lines, [&](const QString& line) { return line.contains(name); }),
            qPrintable(lines.join(u" | "_s)));
        QCOMPARE(alert.card().panel()->width() > 360, isWider);
        QCOMPARE(ControlTree::sticksOut(alert.card()), QString());
        alert.escape();
    }
}

void AlertTest::breaksWhatNoLineCouldHold() {
    const QString name(300, u'W');
    ask(u"Are you sure you want to uninstall %1?"_s.arg(name));
    const AlertDriver alert;
    QCOMPARE(alert.message(), u"Are you sure you want to uninstall %1?"_s.arg(name));
    const auto& label = require<QLabel>(alert.card(), u"alertMessage"_s);
    for (const QString& line : linesOf(label))
        QVERIFY(label.fontMetrics().horizontalAdvance(line) <= label.width());
    QVERIFY(m_window->rect().contains(alert.card().panel()->geometry()));
    QCOMPARE(ControlTree::sticksOut(*alert.card().panel()), QString());
}

void AlertTest::scrollsWhatIsTooLong() {
    ask(u"Are you sure? "_s.repeated(200));
    const AlertDriver alert;
    QVERIFY(m_window->rect().contains(alert.card().panel()->geometry()));
    for (const auto* const button : alert.card().findChildren<PushButton*>())
        QVERIFY(alert.card().panel()->rect().contains(button->geometry()));
    QCOMPARE(alert.defaultButton(), u"Cancel"_s);
    // The keyboard gets there, and Return is the answer's there, too.
    auto& pane = require<ScrollPane>(alert.card());
    QVERIFY(Focus::tabTo([&](const QWidget& widget) { return &widget == &pane; }));
    Input::key(Qt::Key_End);
    QCOMPARE(pane.verticalScrollBar()->value(), pane.verticalScrollBar()->maximum());
    Input::key(Qt::Key_Return);
    QTRY_COMPARE(m_calls, QStringList{u"closed"_s});
}

void AlertTest::startsWithTheSafeAnswer() {
    // However the question came about: by mouse, too, Return gives what is marked.
    Input::click(*m_field);
    QVERIFY(!m_window->testAttribute(Qt::WA_KeyboardFocusChange));
    ask();
    const AlertDriver alert;
    QCOMPARE(alert.defaultButton(), u"Cancel"_s);
    QVERIFY(m_window->testAttribute(Qt::WA_KeyboardFocusChange));
}

void AlertTest::answersByKey_data() {
    using Keys = QList<Qt::Key>;
    QTest::addColumn<Keys>("keys");
    QTest::addColumn<QStringList>("calls");
    const QStringList cancelled{u"closed"_s};
    const QStringList agreed{u"closed"_s, u"go ahead"_s};
    QTest::newRow("Escape") << Keys{Qt::Key_Escape} << cancelled;
    QTest::newRow("Return") << Keys{Qt::Key_Return} << cancelled;
    QTest::newRow("Enter") << Keys{Qt::Key_Enter} << cancelled;
    QTest::newRow("Space") << Keys{Qt::Key_Space} << cancelled;
    QTest::newRow("Tab, Return") << Keys{Qt::Key_Tab, Qt::Key_Return} << agreed;
    QTest::newRow("Right, Space") << Keys{Qt::Key_Right, Qt::Key_Space} << agreed;
    QTest::newRow("Tab, Escape") << Keys{Qt::Key_Tab, Qt::Key_Escape} << cancelled;
    QTest::newRow("Tab, Tab, Return")
        << Keys{Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return} << cancelled;
}

void AlertTest::answersByKey() {
    QFETCH(const QList<Qt::Key>, keys);
    QFETCH(const QStringList, calls);
    ask();
    QVERIFY(AlertDriver::isOpen());
    for (const Qt::Key key : keys)
        Input::key(key);
    QCOMPARE(m_calls, calls);
    QVERIFY(!AlertDriver::isOpen());
}

void AlertTest::staysOpenAtAPressBesideIt() {
    ask();
    const AlertDriver alert;
    Input::click(*m_window, QPoint(5, 5));
    Input::click(*m_field);
    QVERIFY(AlertDriver::isOpen());
    QCOMPARE(m_calls, QStringList());
    QCOMPARE(alert.defaultButton(), u"Cancel"_s);
}

void AlertTest::takesNoPressOfADoubleClick() {
    ask();
    const AlertDriver alert;
    for (const auto* const button : alert.card().findChildren<PushButton*>())
        Input::click(*button);
    QVERIFY(AlertDriver::isOpen());
    alert.press(u"Uninstall"_s);
    QCOMPARE(m_calls, (QStringList{u"closed"_s, u"go ahead"_s}));
}

void AlertTest::givesTheFocusBack() {
    m_field->setFocus();
    ask();
    AlertDriver().escape();
    QCOMPARE(QApplication::focusWidget(), m_field);
}

void AlertTest::isAnAlertToScreenReaders() {
    ask(u"Are you sure you want to uninstall ca-certificates?"_s);
    const AlertDriver alert;
    QAccessibleInterface* const card = QAccessible::queryAccessibleInterface(&alert.card());
    QCOMPARE(card->role(), QAccessible::AlertMessage);
    QVERIFY(card->state().modal);
    QCOMPARE(card->text(QAccessible::Name), u"Uninstall Package"_s);
    // Without what only keeps the name together.
    const QString message = u"Are you sure you want to uninstall ca-certificates?"_s;
    QCOMPARE(card->text(QAccessible::Description), message);
    auto& label = require<QLabel>(alert.card(), u"alertMessage"_s);
    QCOMPARE(QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name), message);
    QCOMPARE(ControlTree::withoutName(alert.card()), QString());
}

void AlertTest::goesWithWhatAsked() {
    ask();
    QVERIFY(AlertDriver::isOpen());
    delete m_asking;
    QVERIFY(!AlertDriver::isOpen());
    QCOMPARE(m_calls, QStringList());
}

void AlertTest::asksByABoxAsWell_data() {
    QTest::addColumn<bool>("isDestructive");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<qsizetype>("answer");
    QTest::newRow("destructive, Return") << true << Qt::Key_Return << qsizetype(1);
    QTest::newRow("destructive, Escape") << true << Qt::Key_Escape << qsizetype(1);
    QTest::newRow("harmless, Return") << false << Qt::Key_Return << qsizetype(0);
    QTest::newRow("harmless, Escape") << false << Qt::Key_Escape << qsizetype(1);
}

void AlertTest::asksByABoxAsWell() {
    QFETCH(const bool, isDestructive);
    QFETCH(const Qt::Key, key);
    QFETCH(const qsizetype, answer);
    QList<qsizetype> answers;
    auto* const box =
        qobject_cast<QMessageBox*>(openAlertBox(m_asking,
                                                {.style = Alert::Style::Warning,
                                                 .title = u"<b>Title</b>"_s,
                                                 .message = u"&lt;i> & <i>Text</i>"_s,
                                                 .answers = {u"Go & do"_s, u"Cancel"_s},
                                                 .isDestructive = isDestructive},
                                                [&](qsizetype chosen) { answers.append(chosen); }));
    QVERIFY(box != nullptr);
    QVERIFY(QTest::qWaitForWindowActive(box));
    QCOMPARE(box->icon(), QMessageBox::Warning);
    for (const auto& [shown, meant] :
         {std::pair(box->text(), u"<b>Title</b>"_s),
          std::pair(box->informativeText(), u"&lt;i> & <i>Text</i>"_s)}) {
        QCOMPARE(QString(shown).remove(u'\u2060'), meant);
        // Which is what the system's own box goes by.
        QVERIFY2(!Qt::mightBeRichText(shown), qPrintable(shown));
    }
    for (const QLabel* const label : box->findChildren<QLabel*>())
        QVERIFY(label->text().isEmpty() || label->textFormat() == Qt::PlainText);
    QTest::keyClick(box, key);
    QCOMPARE(answers, QList<qsizetype>{answer});
}

LUMORA_UI_TEST_MAIN(AlertTest)
#include "tst_alert.moc"
