// SPDX-License-Identifier: MIT
#include "LangManager.h"
#include "PasswordDialog.h"
#include "UiTest.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

class PasswordDialogTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsThePromptAsItIs_data();
    void showsThePromptAsItIs();
    void keepsTheFieldInSight_data();
    void keepsTheFieldInSight();
    void speaksTheUsersLanguage_data();
    void speaksTheUsersLanguage();
    void isLumoras();
    void isAnsweredOrCancelled_data();
    void isAnsweredOrCancelled();
    void givesThePasswordOnce();
    void overwritesWhatItHeld();
    void givesNothingAway();
    void readsThePromptToTheBlind();
};

namespace {

template <class Widget>
Widget* only(const PasswordDialog& dialog, const QString& name = {}) {
    const QList<Widget*> found = dialog.findChildren<Widget*>(name);
    return found.size() == 1 ? found.first() : nullptr;
}

QLineEdit& fieldOf(const PasswordDialog& dialog) {
    return *only<QLineEdit>(dialog);
}

void show(PasswordDialog& dialog) {
    dialog.show();
    dialog.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
}

} // namespace

void PasswordDialogTest::showsThePromptAsItIs_data() {
    QTest::addColumn<QString>("prompt");
    QTest::addColumn<QString>("shown");
    QTest::newRow("usual") << u"[sudo] password for mina: "_s << u"[sudo] password for mina:"_s;
    QTest::newRow("markup") << u"<b>1</b> & <img src=x>"_s << u"<b>1</b> & <img src=x>"_s;
    QTest::newRow("lines") << u"one\ntwo\n\n"_s << u"one\ntwo"_s;
    QTest::newRow("control characters") << u"a\x1B[31mb\a"_s << u"a\u241B[31mb\u2407"_s;
    QTest::newRow("reordering") << u"a\u202Eb"_s << u"a\uFFFDb"_s;
    QTest::newRow("not ASCII") << u"비밀번호 パスワード:"_s << u"비밀번호 パスワード:"_s;
    QTest::newRow("empty") << QString() << u"sudo"_s;
    QTest::newRow("blank") << u" \n\t "_s << u"sudo"_s;
}

void PasswordDialogTest::showsThePromptAsItIs() {
    QFETCH(const QString, prompt);
    const PasswordDialog dialog(prompt);
    auto* const label = only<QLabel>(dialog, u"prompt"_s);
    QVERIFY(label != nullptr);
    QTEST(label->text(), "shown");
    QCOMPARE(label->textFormat(), Qt::PlainText);
}

void PasswordDialogTest::keepsTheFieldInSight_data() {
    QTest::addColumn<QString>("prompt");
    QTest::newRow("usual") << u"Password:"_s;
    QTest::newRow("megabytes of words") << u"word "_s.repeated(1'000'000);
    QTest::newRow("one word of megabytes") << u"W"_s.repeated(5'000'000);
    QTest::newRow("lines") << u"line\n"_s.repeated(100'000);
}

void PasswordDialogTest::keepsTheFieldInSight() {
    QFETCH(const QString, prompt);
    PasswordDialog dialog(prompt);
    show(dialog);
    constexpr QSize screen(640, 400);
    QVERIFY(dialog.width() <= screen.width());
    QVERIFY(dialog.height() <= screen.height());
    for (const QString& name : {u"passwordField"_s, u"cancelPassword"_s, u"confirmPassword"_s}) {
        auto* const widget = only<QWidget>(dialog, name);
        const QRect place(widget->mapTo(&dialog, QPoint()), widget->size());
        QVERIFY2(dialog.rect().contains(place), qPrintable(name));
    }
    QVERIFY(fieldOf(dialog).hasFocus());
    auto* const label = only<QLabel>(dialog, u"prompt"_s);
    // All of it can be seen, or scrolled to.
    QVERIFY(label->height() >= label->heightForWidth(label->width()));
}

void PasswordDialogTest::speaksTheUsersLanguage_data() {
    QTest::addColumn<Lang>("language");
    QTest::addColumn<QString>("ok");
    QTest::addColumn<QString>("cancel");
    QTest::newRow("English") << Lang::en << u"OK"_s << u"Cancel"_s;
    QTest::newRow("Korean") << Lang::ko << u"확인"_s << u"취소"_s;
    QTest::newRow("Japanese") << Lang::ja << u"OK"_s << u"キャンセル"_s;
}

void PasswordDialogTest::speaksTheUsersLanguage() {
    QFETCH(const Lang, language);
    LangManager::shared().setCurrent(language);
    const PasswordDialog dialog(u"Password:"_s);
    LangManager::shared().setCurrent(Lang::en);
    QTEST(only<QPushButton>(dialog, u"confirmPassword"_s)->text(), "ok");
    QTEST(only<QPushButton>(dialog, u"cancelPassword"_s)->text(), "cancel");
    QCOMPARE(dialog.findChildren<QPushButton*>().size(), 2);
}

void PasswordDialogTest::isLumoras() {
    const PasswordDialog dialog(u"Password:"_s);
    QCOMPARE(dialog.windowTitle(), u"Lumora"_s);
    QVERIFY(std::ranges::any_of(dialog.findChildren<QLabel*>(),
                                [](const QLabel* label) { return !label->pixmap().isNull(); }));
    // Nothing but the one field can be typed into.
    QVERIFY(only<QLineEdit>(dialog) != nullptr);
}

void PasswordDialogTest::isAnsweredOrCancelled_data() {
    QTest::addColumn<QString>("way");
    QTest::addColumn<int>("result");
    QTest::newRow("Return") << u"Return"_s << int(QDialog::Accepted);
    QTest::newRow("Enter") << u"Enter"_s << int(QDialog::Accepted);
    QTest::newRow("OK") << u"confirmPassword"_s << int(QDialog::Accepted);
    QTest::newRow("Escape") << u"Escape"_s << int(QDialog::Rejected);
    QTest::newRow("Cancel") << u"cancelPassword"_s << int(QDialog::Rejected);
    QTest::newRow("closed") << u"closed"_s << int(QDialog::Rejected);
    QTest::newRow("Return on Cancel") << u"Tab"_s << int(QDialog::Rejected);
}

void PasswordDialogTest::isAnsweredOrCancelled() {
    QFETCH(const QString, way);
    PasswordDialog dialog(u"Password:"_s);
    const QSignalSpy finished(&dialog, &QDialog::finished);
    show(dialog);
    QTest::keyClicks(&fieldOf(dialog), u"secret"_s);
    if (way == u"Return"_s) {
        QTest::keyClick(&fieldOf(dialog), Qt::Key_Return);
    } else if (way == u"Enter"_s) {
        QTest::keyClick(&fieldOf(dialog), Qt::Key_Enter);
    } else if (way == u"Escape"_s) {
        QTest::keyClick(&fieldOf(dialog), Qt::Key_Escape);
    } else if (way == u"Tab"_s) {
        QTest::keyClick(&fieldOf(dialog), Qt::Key_Tab);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    } else if (way == u"closed"_s) {
        dialog.close();
    } else {
        QTest::mouseClick(only<QPushButton>(dialog, way), Qt::LeftButton);
    }
    QCOMPARE(finished.size(), 1);
    QTEST(dialog.result(), "result");
    QVERIFY(!dialog.isVisible());
}

void PasswordDialogTest::givesThePasswordOnce() {
    PasswordDialog dialog(u"Password:"_s);
    const QString password = u" pä'ss \"$(id)\\ 한🍺 "_s;
    fieldOf(dialog).insert(password);
    QCOMPARE(dialog.takePassword(), password.toUtf8());
    QVERIFY(fieldOf(dialog).text().isEmpty());
    QCOMPARE(dialog.takePassword(), QByteArray());
}

void PasswordDialogTest::overwritesWhatItHeld() {
    PasswordDialog dialog(u"Password:"_s);
    fieldOf(dialog).insert(u"secret"_s);
    // The very memory that the field's text is in.
    const QString held = fieldOf(dialog).text();
    QByteArray password = dialog.takePassword();
    QCOMPARE(held, QString(6, QChar(u'\0')));
    QCOMPARE(password, QByteArray("secret"));
    const QByteArray printed = password;
    PasswordDialog::wipe(password);
    QVERIFY(password.isEmpty());
    QCOMPARE(printed, QByteArray(6, '\0'));
}

void PasswordDialogTest::givesNothingAway() {
    PasswordDialog dialog(u"Password:"_s);
    show(dialog);
    QLineEdit& field = fieldOf(dialog);
    QApplication::clipboard()->setText(u"before"_s);
    QTest::keyClicks(&field, u"secret"_s);
    QCOMPARE(field.displayText(), u"••••••"_s);
    QTest::keySequence(&field, QKeySequence::SelectAll);
    QTest::keySequence(&field, QKeySequence::Copy);
    QTest::keySequence(&field, QKeySequence::Cut);
    QCOMPARE(QApplication::clipboard()->text(), u"before"_s);
    QTest::keyClick(&field, Qt::Key_Backspace);
    QTest::keySequence(&field, QKeySequence::Undo);
    QCOMPARE(field.text(), QString());
    QCOMPARE(field.contextMenuPolicy(), Qt::NoContextMenu);
    for (const auto hint :
         {Qt::ImhHiddenText, Qt::ImhSensitiveData, Qt::ImhNoPredictiveText, Qt::ImhNoAutoUppercase})
        QVERIFY(field.inputMethodHints().testFlag(hint));
}

void PasswordDialogTest::readsThePromptToTheBlind() {
    const PasswordDialog dialog(u"[sudo] password\nfor <b>mina</b>: "_s);
    fieldOf(dialog).insert(u"secret"_s);
    QAccessibleInterface* const field = QAccessible::queryAccessibleInterface(&fieldOf(dialog));
    QVERIFY(field != nullptr);
    QCOMPARE(field->text(QAccessible::Name), u"[sudo] password for <b>mina</b>:"_s);
    QVERIFY(field->state().passwordEdit);
    QVERIFY(!field->text(QAccessible::Value).contains(u"secret"_s));
}

LUMORA_UI_TEST_MAIN(PasswordDialogTest)
#include "tst_passworddialog.moc"
