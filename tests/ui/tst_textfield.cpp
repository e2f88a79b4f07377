// SPDX-License-Identifier: MIT
#include "Find.h"
#include "Input.h"
#include "UiTest.h"
#include "widgets/IconButton.h"
#include "widgets/SearchField.h"

#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

struct Window final {
    Window() {
        auto* const layout = new QVBoxLayout(&host);
        layout->addWidget(field);
        host.show();
        if (!QTest::qWaitForWindowActive(&host))
            qFatal("The window doesn't become active");
        field->setFocus();
    }

    [[nodiscard]] IconButton* button() const { return findVisible<IconButton>(host); }

    QWidget host;
    SearchField* field{new SearchField(u"Filter"_s)};
};

} // namespace

class TextFieldTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hasAButtonOnlyWhileThereIsAText();
    void isEmptiedByTheButton();
    void keepsTheTextClearOfTheButton();
    void isLeftDownwards();
};

void TextFieldTest::hasAButtonOnlyWhileThereIsAText() {
    const Window window;
    QVERIFY(window.button() == nullptr);
    Input::type(u"x"_s);
    QVERIFY(window.button() != nullptr);
    QCOMPARE(window.button()->accessibleName(), u"Remove"_s);
    QVERIFY(window.field->rect().contains(window.button()->geometry()));
    QVERIFY(window.button()->width() >= 24 && window.button()->height() >= 24);
    Input::key(Qt::Key_Backspace);
    QVERIFY(window.button() == nullptr);
    // The Tab key passes it.
    Input::type(u"x"_s);
    Input::key(Qt::Key_Tab);
    QVERIFY(window.field->hasFocus());
}

void TextFieldTest::isEmptiedByTheButton() {
    Window window;
    Input::type(u"jq"_s);
    const QSignalSpy changed(window.field, &SearchField::textChanged);
    window.host.setFocus();
    Input::click(*window.button());
    QCOMPARE(window.field->text(), QString());
    QCOMPARE(changed.count(), 1);
    QVERIFY(window.button() == nullptr);
    QVERIFY(window.field->hasFocus());
    Input::type(u"w"_s);
    QCOMPARE(window.field->text(), u"w"_s);
}

void TextFieldTest::keepsTheTextClearOfTheButton() {
    const Window window;
    Input::type(QString(200, u'm'));
    Input::key(Qt::Key_End);
    const QRect caret = window.field->inputMethodQuery(Qt::ImCursorRectangle).toRect();
    QVERIFY(caret.isValid() && caret.center().x() < window.button()->x());
}

void TextFieldTest::isLeftDownwards() {
    const Window window;
    const QSignalSpy left(window.field, &SearchField::leftDownwards);
    Input::type(u"jq"_s);
    Input::key(Qt::Key_Up);
    QCOMPARE(left.count(), 0);
    Input::key(Qt::Key_Down);
    QCOMPARE(left.count(), 1);
    QCOMPARE(window.field->text(), u"jq"_s);
}

LUMORA_UI_TEST_MAIN(TextFieldTest)
#include "tst_textfield.moc"
