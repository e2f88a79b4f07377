// SPDX-License-Identifier: MIT
#include "Input.h"
#include "PaintWatch.h"
#include "SheetDriver.h"
#include "Shown.h"
#include "UiTest.h"
#include "style/LumoraStyle.h"
#include "widgets/Sheet.h"

#include <QApplication>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QVBoxLayout>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// How long the second press of a double click may take.
class DoubleClickInterval final {
public:
    explicit DoubleClickInterval(std::chrono::milliseconds interval) {
        QApplication::setDoubleClickInterval(static_cast<int>(interval.count()));
    }

    ~DoubleClickInterval() { QApplication::setDoubleClickInterval(m_usual); }

    Q_DISABLE_COPY_MOVE(DoubleClickInterval)

private:
    int m_usual{QApplication::doubleClickInterval()};
};

/// A window that is nothing but a button, which opens a sheet; where the window's button is, the
/// sheet has another one.
struct Window final {
    Window() {
        auto* const layout = new QVBoxLayout(&host);
        layout->addWidget(opener);
        QObject::connect(opener, &QPushButton::clicked, &host, [this] { open(); });
        host.resize(600, 400);
        host.show();
        if (!QTest::qWaitForWindowActive(&host))
            qFatal("The window doesn't become active");
    }

    Sheet* open() {
        auto* const sheet = new Sheet(&host);
        auto* const button = new QPushButton(u"inside"_s);
        button->setObjectName(u"inside"_s);
        sheet->panel()->setLayout(new QVBoxLayout);
        sheet->panel()->layout()->addWidget(button);
        QObject::connect(button, &QPushButton::clicked, &host, [this] { ++pressedInside; });
        sheet->present();
        return sheet;
    }

    [[nodiscard]] SheetDriver sheet() const { return SheetDriver(host); }

    QWidget host;
    QPushButton* opener{new QPushButton(u"outside"_s)};
    int pressedInside{};
};

} // namespace

class SheetTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void takesNothingOfTheDoubleClickThatOpensIt();
    void takesPressesAfterThat();
    void fadesInUnlessNothingIsToMove();
    void paintsNothingBeforeItCanBeSeen();
    void leavesTheKeyboardToTheSheetAboveIt();
    void isGivenTheKeyboardByTheSheetAboveIt();
};

void SheetTest::takesNothingOfTheDoubleClickThatOpensIt() {
    const DoubleClickInterval interval(1h);
    Window window;
    Input::click(*window.opener);
    const SheetDriver sheet = window.sheet();
    Input::click(sheet.button(u"inside"_s));
    QCOMPARE(window.pressedInside, 0);
    // Nor does what lies behind it.
    QSignalSpy opened(window.opener, &QPushButton::clicked);
    Input::click(window.host, QPoint(1, 1));
    Input::click(*window.opener);
    QCOMPARE(opened.count(), 0);
    // The keyboard has no double click.
    QVERIFY(sheet.button(u"inside"_s).hasFocus());
    Input::key(Qt::Key_Space);
    QCOMPARE(window.pressedInside, 1);
}

void SheetTest::takesPressesAfterThat() {
    const DoubleClickInterval interval(1ms);
    Window window;
    Input::click(*window.opener);
    const SheetDriver sheet = window.sheet();
    QTRY_VERIFY(sheet.takesPresses());
    Input::click(sheet.button(u"inside"_s));
    QCOMPARE(window.pressedInside, 1);
}

void SheetTest::fadesInUnlessNothingIsToMove() {
    auto* const style = qobject_cast<LumoraStyle*>(QApplication::style());
    QVERIFY(style != nullptr);
    const auto restore = qScopeGuard([style] { style->setMotion(LumoraStyle::Motion::Usual); });
    Window window;
    window.open();
    Sheet* const fading = Sheet::openOver(&window.host);
    QVERIFY(fading->graphicsEffect() != nullptr);
    QTRY_VERIFY(fading->graphicsEffect() == nullptr);
    style->setMotion(LumoraStyle::Motion::Reduced);
    const Sheet* const still = window.open();
    QCOMPARE(Sheet::openOver(&window.host), still);
    QVERIFY(still->graphicsEffect() == nullptr);
    const PaintWatch paints(*still);
    QTRY_VERIFY(paints.count() > 0);
}

void SheetTest::paintsNothingBeforeItCanBeSeen() {
    Window window;
    const QWidget& host = window.host;
    QTRY_COMPARE(shown(host), window.host.grab().toImage());
    PaintWatch paints(host);
    Sheet* const sheet = window.open();
    // What is due at once; the first step of the fading is later.
    QCoreApplication::sendPostedEvents();
    QVERIFY(!paints.area().contains(QPoint(1, 1)));
    QTRY_VERIFY(paints.area().contains(QPoint(1, 1)));
    QTRY_VERIFY(sheet->graphicsEffect() == nullptr);
    QTRY_COMPARE(shown(host), window.host.grab().toImage());
}

void SheetTest::leavesTheKeyboardToTheSheetAboveIt() {
    Window window;
    window.opener->setFocus();
    Sheet* const below = window.open();
    Sheet* const above = window.open();
    const QWidget* const inside = above->panel()->findChild<QPushButton*>();
    QVERIFY(inside->hasFocus());
    below->dismiss();
    QVERIFY(inside->hasFocus());
    // Which gives it back to whom the other one had it from.
    above->dismiss();
    QVERIFY(window.opener->hasFocus());
}

void SheetTest::isGivenTheKeyboardByTheSheetAboveIt() {
    Window window;
    Sheet* const below = window.open();
    auto* const other = new QPushButton(u"other"_s);
    below->panel()->layout()->addWidget(other);
    other->show();
    Sheet* const above = window.open();
    below->giveFocus(other);
    QVERIFY(above->panel()->findChild<QPushButton*>()->hasFocus());
    above->dismiss();
    QVERIFY(other->hasFocus());
    below->giveFocus(below->panel()->findChild<QPushButton*>(u"inside"_s));
    QVERIFY(!other->hasFocus());
}

LUMORA_UI_TEST_MAIN(SheetTest)
#include "tst_sheet.moc"
