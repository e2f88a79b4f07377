// SPDX-License-Identifier: MIT
#pragma once

#include <QKeyEvent>

/// A button of the toolkit that Return presses as well as Space, which the toolkit knows of those
/// in dialogs only, and that keeps the focus while it is turned off: the toolkit would hand it on
/// to the next control, where the key that has just pressed the button means something else.
template <class Button>
class KeyboardButton : public Button {
protected:
    using Button::Button;

    void keyPressEvent(QKeyEvent* event) override {
        const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (!isReturn)
            Button::keyPressEvent(event);
        else if (!event->isAutoRepeat())
            this->click();
    }

    bool focusNextPrevChild(bool next) override {
        // The Tab key doesn't get here from a button that is turned off, but the toolkit does.
        const bool isBeingTurnedOff = this->isVisible() && !this->isEnabled();
        return isBeingTurnedOff || Button::focusNextPrevChild(next);
    }
};
