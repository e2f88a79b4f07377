// SPDX-License-Identifier: MIT
#include "UpdateAlertBoxes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>

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

QList<QMessageBox*> visibleBoxes() {
    QList<QMessageBox*> boxes;
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        auto* const box = qobject_cast<QMessageBox*>(widget);
        if (box != nullptr && box->isVisible())
            boxes.append(box);
    }
    return boxes;
}

QMessageBox* onlyBox() {
    const QList<QMessageBox*> boxes = visibleBoxes();
    return boxes.size() == 1 ? boxes.first() : nullptr;
}

} // namespace

void UpdateAlertBoxesTest::init() {
    m_answers.clear();
    m_window.emplace();
    m_boxes.emplace(&*m_window);
    m_window->show();
}

void UpdateAlertBoxesTest::showsAnAlert_data() {
    QTest::addColumn<Style>("style");
    QTest::addColumn<QMessageBox::Icon>("icon");
    QTest::newRow("informational") << Style::Informational << QMessageBox::Information;
    QTest::newRow("warning") << Style::Warning << QMessageBox::Warning;
}

void UpdateAlertBoxesTest::showsAnAlert() {
    QFETCH(const Style, style);
    ask(notice(style));
    QMessageBox* const box = onlyBox();
    QVERIFY(box != nullptr);
    QTEST(box->icon(), "icon");
    QCOMPARE(box->windowTitle(), u"Title"_s);
    QCOMPARE(box->text(), u"Title"_s);
    QCOMPARE(box->informativeText(), u"Text"_s);
    QCOMPARE(box->buttons().size(), 1);
    QCOMPARE(box->buttons().first()->text(), u"OK"_s);
    QVERIFY(box->isModal());
    QCOMPARE(box->windowModality(), Qt::ApplicationModal);
    QCOMPARE(box->parentWidget(), &*m_window);
    QVERIFY(m_answers.isEmpty());
    box->close();
    QTRY_COMPARE(m_answers, QList<qsizetype>{0});
    QVERIFY(visibleBoxes().isEmpty());
}

void UpdateAlertBoxesTest::tellsWhichButtonWasChosen_data() {
    QTest::addColumn<QString>("way");
    QTest::addColumn<qsizetype>("answer");
    QTest::newRow("first") << u"Update Now"_s << qsizetype(0);
    QTest::newRow("last") << u"Later"_s << qsizetype(1);
    QTest::newRow("Return") << u"Return"_s << qsizetype(0);
    QTest::newRow("Escape") << u"Escape"_s << qsizetype(1);
    QTest::newRow("closed") << u"closed"_s << qsizetype(1);
}

void UpdateAlertBoxesTest::tellsWhichButtonWasChosen() {
    QFETCH(const QString, way);
    QFETCH(const qsizetype, answer);
    ask(offer());
    QMessageBox* const box = onlyBox();
    QVERIFY(box != nullptr);
    QVERIFY(QTest::qWaitForWindowActive(box));
    if (way == u"closed"_s) {
        box->close();
    } else if (way == u"Return"_s || way == u"Escape"_s) {
        QTest::keyClick(box, way == u"Return"_s ? Qt::Key_Return : Qt::Key_Escape);
    } else {
        for (QAbstractButton* const button : box->buttons()) {
            if (button->text() == way)
                button->click();
        }
    }
    QTRY_COMPARE(m_answers, QList<qsizetype>{answer});
}

void UpdateAlertBoxesTest::showsOneAfterTheOther() {
    for (const QString& title : {u"one"_s, u"two"_s, u"three"_s})
        ask(offer(title));
    for (const QString& title : {u"one"_s, u"two"_s, u"three"_s}) {
        QTRY_VERIFY(onlyBox() != nullptr && onlyBox()->windowTitle() == title);
        onlyBox()->close();
    }
    QVERIFY(visibleBoxes().isEmpty());
    QTRY_COMPARE(m_answers, (QList<qsizetype>{1, 1, 1}));
}

void UpdateAlertBoxesTest::interpretsNothing() {
    ask({.title = u"<b>1</b> & 2\u202E"_s,
         .text = u"<h1>3</h1> & 4"_s,
         .buttons = {u"Now & then"_s, u"<i>no</i>"_s}});
    QMessageBox* const box = onlyBox();
    QVERIFY(box != nullptr);
    QCOMPARE(box->textFormat(), Qt::PlainText);
    QCOMPARE(box->text(), u"<b>1</b> & 2\uFFFD"_s);
    QCOMPARE(box->informativeText(), u"<h1>3</h1> & 4"_s);
    QCOMPARE(box->defaultButton()->text(), u"Now && then"_s);
    box->close();
    QTRY_COMPARE(m_answers, QList<qsizetype>{1});
}

void UpdateAlertBoxesTest::isClosedWithItsWindow() {
    ask(offer());
    ask(offer(u"next"_s));
    QVERIFY(onlyBox() != nullptr);
    m_window.reset();
    QVERIFY(visibleBoxes().isEmpty());
    QTRY_COMPARE(m_answers, (QList<qsizetype>{1, 1}));
    QVERIFY(visibleBoxes().isEmpty());
}

QTEST_MAIN(UpdateAlertBoxesTest)
#include "tst_updatealertboxes.moc"
