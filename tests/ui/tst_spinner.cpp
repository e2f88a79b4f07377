// SPDX-License-Identifier: MIT
#include "Find.h"
#include "PaintWatch.h"
#include "UiTest.h"
#include "style/LumoraStyle.h"
#include "widgets/Spinner.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDateTime>
#include <QScopeGuard>

#include <functional>

using namespace Qt::StringLiterals;

using Motion = LumoraStyle::Motion;

namespace {

qint64 second() {
    return QDateTime::currentSecsSinceEpoch();
}

} // namespace

class SpinnerTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void turns();
    void ticksWhereNothingIsToMove();
    void paintsNothingElse();
    void wakesNobodyOutOfSight_data();
    void wakesNobodyOutOfSight();
};

void SpinnerTest::turns() {
    Spinner spinner(Spinner::Size::Large);
    spinner.show();
    // More often than the seconds do.
    const auto hasMoved = [&spinner] {
        const qint64 now = second();
        const QImage before = spinner.grab().toImage();
        const auto isOther = [&] { return spinner.grab().toImage() != before; };
        return QTest::qWaitFor([&] { return isOther() || second() != now; }) && second() == now;
    };
    // Asked once more after it has come true, as QTRY_VERIFY does, it may be the next second.
    QVERIFY(QTest::qWaitFor(hasMoved));
    QVERIFY(Spinner::interval(&spinner) < 100);
}

void SpinnerTest::ticksWhereNothingIsToMove() {
    auto& style = dynamic_cast<LumoraStyle&>(*QApplication::style());
    style.setMotion(Motion::Reduced);
    const auto restore = qScopeGuard([&style] { style.setMotion(Motion::Usual); });
    Spinner spinner(Spinner::Size::Large);
    spinner.show();
    QCOMPARE(Spinner::interval(&spinner), 1'000);
    const qint64 now = second();
    const QImage before = spinner.grab().toImage();
    // The first may have been the last moment of a second.
    if (second() != now)
        return ticksWhereNothingIsToMove();
    QVERIFY(QTest::qWaitFor([&] { return spinner.grab().toImage() != before; }));
    QVERIFY(second() != now);
    // Back in motion without anybody's doing.
    style.setMotion(Motion::Usual);
    QVERIFY(Spinner::interval(&spinner) < 100);
}

void SpinnerTest::paintsNothingElse() {
    QWidget window;
    window.resize(200, 100);
    Spinner spinner(Spinner::Size::Small, &window);
    spinner.move(30, 40);
    window.show();
    PaintWatch paints(spinner);
    QTRY_VERIFY(paints.count() > 1);
    paints.forget();
    QTRY_VERIFY(paints.count() > 2);
    QCOMPARE(paints.area(), spinner.geometry());
}

void SpinnerTest::wakesNobodyOutOfSight_data() {
    QTest::addColumn<std::function<void(QWidget&, bool)>>("setInSight");
    const auto add = [](const char* name, const std::function<void(QWidget&, bool)>& setInSight) {
        QTest::newRow(name) << setInSight;
    };
    add("hidden", [](QWidget& content, bool isSeen) { content.setVisible(isSeen); });
    add("in a hidden window",
        [](QWidget& content, bool isSeen) { content.window()->setVisible(isSeen); });
    add("beyond the edge",
        [](QWidget& content, bool isSeen) { content.move(0, isSeen ? 0 : 200); });
    add("covered", [](QWidget& content, bool isSeen) {
        auto& lid = require<QWidget>(*content.window(), u"lid"_s);
        lid.setGeometry(isSeen ? QRect() : content.window()->rect());
        lid.raise();
    });
}

void SpinnerTest::wakesNobodyOutOfSight() {
    QFETCH(const std::function<void(QWidget&, bool)>, setInSight);
    QWidget window;
    QWidget content(&window);
    Spinner spinner(Spinner::Size::Small, &content);
    QWidget lid(&window);
    lid.setObjectName(u"lid"_s);
    lid.setAutoFillBackground(true);
    lid.resize(0, 0);
    window.resize(200, 100);
    window.show();
    const auto isAwake = [&spinner] {
        return !QAbstractEventDispatcher::instance()->registeredTimers(&spinner).isEmpty();
    };
    const PaintWatch paints(spinner);
    const auto turns = [&paints] {
        const int before = paints.count();
        return QTest::qWaitFor([&] { return paints.count() > before + 1; });
    };
    for (int round = 0; round < 2; ++round) {
        QVERIFY(turns());
        setInSight(content, false);
        QTRY_VERIFY(!isAwake());
        // And nobody starts it again.
        QVERIFY(!QTest::qWaitFor(isAwake, 2 * Spinner::interval(&spinner)));
        setInSight(content, true);
    }
}

LUMORA_UI_TEST_MAIN(SpinnerTest)
#include "tst_spinner.moc"
