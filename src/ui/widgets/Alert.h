// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include <functional>

class QWidget;

/// Questions and notices that have to be answered before anything else, with every text taken as
/// plain text: a card inside the window, on macOS the platform's own box.
namespace Alert {

enum class Style { Informational, Warning };

struct Question final {
    Style style{Style::Informational};
    QString title{};
    QString message{};
    /// The first goes ahead, the last is Escape's.
    QStringList answers{};
    /// What going ahead does can't be undone. Return gives the last answer then, else the first.
    bool isDestructive{};
};

/// Asks without blocking and calls `answered` with the place of the chosen answer. The alert lies
/// over the window of `parent` and is gone with that, unanswered; otherwise it deletes itself.
QWidget* ask(QWidget* parent, const Question& question, std::function<void(qsizetype)> answered);

struct Confirmation final {
    QString title{};
    QString message{};
    /// The button that goes ahead; what it does can't be undone.
    QString destructive{};
    QString cancel{};
};

/// Asks and calls `goAhead` if the user agrees, after `closed`, which is called with any answer.
void confirm(QWidget* parent, const Confirmation& texts, std::function<void()> goAhead,
             std::function<void()> closed);

} // namespace Alert
