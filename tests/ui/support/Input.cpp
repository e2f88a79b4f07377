// SPDX-License-Identifier: MIT
#include "Input.h"

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <QWindow>

namespace {

struct Place {
    QWindow* window;
    QPoint position;
};

Place placeIn(const QWidget& widget, std::optional<QPoint> place) {
    const QPoint inWidget = place.value_or(widget.rect().center());
    QWidget* const window = widget.window();
    return {window->windowHandle(), widget.mapTo(window, inWidget)};
}

} // namespace

void Input::click(const QWidget& widget, std::optional<QPoint> place, Qt::MouseButton button) {
    const Place at = placeIn(widget, place);
    QTest::mouseMove(at.window, at.position);
    QTest::mouseClick(at.window, button, {}, at.position);
}

void Input::press(const QWidget& widget, std::optional<QPoint> place) {
    const Place at = placeIn(widget, place);
    QTest::mousePress(at.window, Qt::LeftButton, {}, at.position);
}

void Input::release(const QWidget& widget, std::optional<QPoint> place) {
    const Place at = placeIn(widget, place);
    QTest::mouseRelease(at.window, Qt::LeftButton, {}, at.position);
}

void Input::moveTo(const QWidget& widget, std::optional<QPoint> place) {
    const Place at = placeIn(widget, place);
    QTest::mouseMove(at.window, at.position);
}

QWindow* Input::focusWindow() {
    QWindow* const focused = QGuiApplication::focusWindow();
    if (focused != nullptr && focused->isVisible())
        return focused;
    QWidget* top = QApplication::activeModalWidget();
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (top == nullptr && widget->isVisible() && widget->windowType() == Qt::Window)
            top = widget;
    }
    if (top == nullptr)
        qFatal("There is no window that could have the focus");
    top->activateWindow();
    if (!QTest::qWaitForWindowActive(top))
        qFatal("The window doesn't become active");
    return top->windowHandle();
}

void Input::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(focusWindow(), key, modifiers);
}

void Input::type(const QString& text) {
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, focusWindow(), Qt::Key_unknown, QString(character), {});
}
