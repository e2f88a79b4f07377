// SPDX-License-Identifier: MIT
#include "UiTest.h"
#include "shell/FirstFrame.h"

#include <QElapsedTimer>
#include <QPaintEvent>

#include <memory>

class FirstFrameTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void comesAfterTheTurnInWhichItIsPainted();
    void isWaitedForNoLongerThanItMayTake();
    void isWaitedForNoLongerThanThereIsAWindow();
};

void FirstFrameTest::comesAfterTheTurnInWhichItIsPainted() {
    QWidget window;
    const QFuture<void> frame = FirstFrame::of(&window);
    QVERIFY(!frame.isFinished());
    QPaintEvent paint(window.rect());
    QCoreApplication::sendEvent(&window, &paint);
    QVERIFY(!frame.isFinished());
    // No timer is among them.
    QCoreApplication::sendPostedEvents();
    QVERIFY(frame.isFinished());
    // What watched it is gone before its time is up.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(window.children().isEmpty());
}

void FirstFrameTest::isWaitedForNoLongerThanItMayTake() {
    QWidget window;
    const QFuture<void> frame = FirstFrame::of(&window);
    QElapsedTimer timer;
    timer.start();
    QTRY_VERIFY(frame.isFinished());
    QVERIFY(timer.elapsed() >= 200);
}

void FirstFrameTest::isWaitedForNoLongerThanThereIsAWindow() {
    auto window = std::make_unique<QWidget>();
    const QFuture<void> frame = FirstFrame::of(window.get());
    window.reset();
    QVERIFY(frame.isFinished());
}

LUMORA_UI_TEST_MAIN(FirstFrameTest)
#include "tst_firstframe.moc"
