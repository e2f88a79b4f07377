// SPDX-License-Identifier: MIT
#include "UiTest.h"
#include "style/LumoraStyle.h"
#include "widgets/Spinner.h"

#include <QApplication>
#include <QDateTime>
#include <QScopeGuard>

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
    QTRY_VERIFY(hasMoved());
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

LUMORA_UI_TEST_MAIN(SpinnerTest)
#include "tst_spinner.moc"
