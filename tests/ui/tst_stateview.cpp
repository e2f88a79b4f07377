// SPDX-License-Identifier: MIT
#include "Find.h"
#include "UiTest.h"
#include "style/Theme.h"
#include "widgets/Spinner.h"
#include "widgets/StateView.h"
#include "widgets/SymbolLabel.h"

#include <QLabel>

using namespace Qt::StringLiterals;

namespace {

constexpr int spacing = 12;

struct Window final {
    Window() {
        view.resize(500, 300);
        view.showSymbol(u"shippingbox"_s, &Theme::secondaryText, u"Nothing"_s);
        view.show();
        if (!QTest::qWaitForWindowExposed(&view))
            qFatal("The view doesn't appear");
    }

    [[nodiscard]] QRect text() const { return require<QLabel>(view).geometry(); }

    StateView view;
};

} // namespace

class StateViewTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsALargeSymbolAboveItsText();
    void turnsASpinnerWhileItIsBusy();
    void standsInTheMiddle();
    void readsItsText();
};

void StateViewTest::showsALargeSymbolAboveItsText() {
    const Window window;
    const auto& symbol = require<SymbolLabel>(window.view);
    QCOMPARE(symbol.symbol(), u"shippingbox"_s);
    QCOMPARE(symbol.size(), QSize(48, 48));
    QCOMPARE(window.text().top(), symbol.geometry().bottom() + 1 + spacing);
    QCOMPARE(require<QLabel>(window.view).text(), u"Nothing"_s);
    QCOMPARE(
        require<QLabel>(window.view).palette().color(require<QLabel>(window.view).foregroundRole()),
        Theme::light().secondaryText);
    QVERIFY(findVisible<Spinner>(window.view) == nullptr);
    QVERIFY(!window.view.isBusy());
}

void StateViewTest::turnsASpinnerWhileItIsBusy() {
    Window window;
    window.view.showBusy(u"Loading..."_s);
    const auto& spinner = require<Spinner>(window.view);
    QTRY_COMPARE(window.text().top(), spinner.geometry().bottom() + 1 + spacing);
    QVERIFY(findVisible<SymbolLabel>(window.view) == nullptr);
    QVERIFY(window.view.isBusy());
    QCOMPARE(window.view.text(), u"Loading..."_s);
    window.view.showSymbol(u"checkmark.circle"_s, &Theme::good, u"All is well"_s);
    QVERIFY(findVisible<Spinner>(window.view) == nullptr);
    QCOMPARE(require<SymbolLabel>(window.view).symbol(), u"checkmark.circle"_s);
}

void StateViewTest::standsInTheMiddle() {
    Window window;
    for (const QSize size : {QSize(720, 548), QSize(520, 398)}) {
        window.view.resize(size);
        QTRY_COMPARE(window.view.size(), size);
        QCoreApplication::processEvents();
        const QRect content = window.text().united(require<SymbolLabel>(window.view).geometry());
        const QPoint distance = content.center() - window.view.rect().center();
        QVERIFY(qAbs(distance.x()) <= 1 && qAbs(distance.y()) <= 1);
    }
}

void StateViewTest::readsItsText() {
    Window window;
    QCOMPARE(window.view.accessibleName(), u"Nothing"_s);
    window.view.showBusy(u"Loading..."_s);
    QCOMPARE(window.view.accessibleName(), u"Loading..."_s);
}

LUMORA_UI_TEST_MAIN(StateViewTest)
#include "tst_stateview.moc"
