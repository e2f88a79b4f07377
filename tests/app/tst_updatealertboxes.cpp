// SPDX-License-Identifier: MIT
#include "AlertDriver.h"
#include "Find.h"
#include "Input.h"
#include "UiTest.h"
#include "UpdateAlertBoxes.h"
#include "widgets/SymbolLabel.h"

#include <QLabel>

using namespace Qt::StringLiterals;

class UpdateAlertBoxesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void showsAnAlert_data();
    void showsAnAlert();
    void tellsWhichButtonWasChosen_data();
    void tellsWhichButtonWasChosen();
    void showsOneAfterTheOther();
    void interpretsNothing();
    void isClosedWithItsWindow();

private:
    /// Shows an alert and notes the answer.
    QCoro::Task<> ask(UpdateAlerts::Alert alert) {
        const qsizetype answer = co_await m_boxes->show(std::move(alert));
        m_answers.append(answer);
    }

    std::optional<QWidget> m_window;
    std::optional<UpdateAlertBoxes> m_boxes;
    QList<qsizetype> m_answers;
};

namespace {

using Style = UpdateAlerts::Style;

UpdateAlerts::Alert offer(const QString& title = u"Title"_s) {
    return {.title = title, .text = u"Text"_s, .buttons = {u"Update Now"_s, u"Later"_s}};
}

UpdateAlerts::Alert notice(Style style = Style::Informational) {
    return {.style = style, .title = u"Title"_s, .text = u"Text"_s, .buttons = {u"OK"_s}};
}

} // namespace

void UpdateAlertBoxesTest::init() {
    m_answers.clear();
    m_window.emplace();
    m_boxes.emplace(&*m_window);
    m_window->resize(700, 450);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(&*m_window));
}

void UpdateAlertBoxesTest::showsAnAlert_data() {
    QTest::addColumn<Style>("style");
    QTest::addColumn<QString>("symbol");
    QTest::newRow("informational") << Style::Informational << u"info.circle"_s;
    QTest::newRow("warning") << Style::Warning << u"exclamationmark.triangle"_s;
}

void UpdateAlertBoxesTest::showsAnAlert() {
    QFETCH(const Style, style);
    ask(notice(style));
    const AlertDriver alert;
    QTEST(require<SymbolLabel>(alert.card()).symbol(), "symbol");
    QCOMPARE(alert.title(), u"Title"_s);
    QCOMPARE(alert.message(), u"Text"_s);
    QCOMPARE(alert.buttons(), QStringList{u"OK"_s});
    // All of the window is out of reach behind it.
    QCOMPARE(alert.card().parentWidget(), &*m_window);
    QCOMPARE(alert.card().geometry(), m_window->rect());
    QVERIFY(m_answers.isEmpty());
    alert.escape();
    QTRY_COMPARE(m_answers, QList<qsizetype>{0});
    QVERIFY(!AlertDriver::isOpen());
}

void UpdateAlertBoxesTest::tellsWhichButtonWasChosen_data() {
    QTest::addColumn<std::function<void(const AlertDriver&)>>("choose");
    QTest::addColumn<qsizetype>("answer");
    const auto add = [](const char* name, const std::function<void(const AlertDriver&)>& choose,
                        qsizetype answer) { QTest::newRow(name) << choose << answer; };
    add(
        "first", [](const AlertDriver& alert) { alert.press(u"Update Now"_s); }, 0);
    add(
        "last", [](const AlertDriver& alert) { alert.press(u"Later"_s); }, 1);
    add(
        "Return", [](const AlertDriver&) { Input::key(Qt::Key_Return); }, 0);
    add(
        "Escape", [](const AlertDriver& alert) { alert.escape(); }, 1);
}

void UpdateAlertBoxesTest::tellsWhichButtonWasChosen() {
    QFETCH(const std::function<void(const AlertDriver&)>, choose);
    QFETCH(const qsizetype, answer);
    ask(offer());
    choose(AlertDriver());
    QTRY_COMPARE(m_answers, QList<qsizetype>{answer});
    QVERIFY(!AlertDriver::isOpen());
}

void UpdateAlertBoxesTest::showsOneAfterTheOther() {
    for (const QString& title : {u"one"_s, u"two"_s, u"three"_s})
        ask(offer(title));
    for (const QString& title : {u"one"_s, u"two"_s, u"three"_s}) {
        QTRY_VERIFY(AlertDriver::isOpen() && AlertDriver().title() == title);
        QCOMPARE(Sheet::allOver(&*m_window).size(), 1);
        AlertDriver().escape();
    }
    QTRY_COMPARE(m_answers, (QList<qsizetype>{1, 1, 1}));
    QVERIFY(!AlertDriver::isOpen());
}

void UpdateAlertBoxesTest::interpretsNothing() {
    ask({.title = u"<b>1</b> & 2\u202E"_s,
         .text = u"<h1>3</h1> & 4"_s,
         .buttons = {u"Now & then"_s, u"<i>no</i>"_s}});
    const AlertDriver alert;
    QCOMPARE(alert.title(), u"<b>1</b> & 2\uFFFD"_s);
    QCOMPARE(alert.message(), u"<h1>3</h1> & 4"_s);
    QCOMPARE(alert.buttons(), (QStringList{u"<i>no</i>"_s, u"Now & then"_s}));
    for (const QLabel* const label : alert.card().findChildren<QLabel*>())
        QCOMPARE(label->textFormat(), Qt::PlainText);
    alert.escape();
    QTRY_COMPARE(m_answers, QList<qsizetype>{1});
}

void UpdateAlertBoxesTest::isClosedWithItsWindow() {
    ask(offer());
    ask(offer(u"next"_s));
    QVERIFY(AlertDriver::isOpen());
    m_window.reset();
    QTRY_COMPARE(m_answers, (QList<qsizetype>{1, 1}));
    QVERIFY(!AlertDriver::isOpen());
}

LUMORA_UI_TEST_MAIN(UpdateAlertBoxesTest)
#include "tst_updatealertboxes.moc"
