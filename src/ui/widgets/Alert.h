// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

class QMessageBox;
class QWidget;

/// The platform's message boxes, with every text taken as plain text.
namespace Alert {

struct Confirmation final {
    QString title{};
    QString message{};
    /// The button that goes ahead; what it does can't be undone.
    QString destructive{};
    QString cancel{};
};

/// Asks without blocking and calls `goAhead` if the user agrees. The box belongs to `parent`
/// and is gone with it, unanswered. `closed` is called on every way out.
void confirm(QWidget* parent, const Confirmation& texts, std::function<void()> goAhead,
             std::function<void()> closed);

/// Sets both texts of a box so that nothing in them is interpreted.
void setPlainTexts(QMessageBox* box, const QString& title, const QString& message);

} // namespace Alert
