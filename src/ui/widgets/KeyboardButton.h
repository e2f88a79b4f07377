// SPDX-License-Identifier: MIT
#pragma once

#include <QKeyEvent>

/// A button of the toolkit that keeps the focus while it is turned off.
///
/// The toolkit would hand the focus on to the next control, where the key that has just pressed
/// the button means something else.
template <class Button>
class KeyboardButton : public Button {
protected:
    using Button::Button;

    bool focusNextPrevChild(bool next) override {
        // The Tab key doesn't get here from a button that is turned off, but the toolkit does.
        const bool isBeingTurnedOff = this->isVisible() && !this->isEnabled();
        return isBeingTurnedOff || Button::focusNextPrevChild(next);
    }
};
