// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QList>
#include <QString>

/// What stands at the trailing end of a row, and what can be done there.
struct RowAction final {
    enum class Kind {
        None,
        /// A trash can, for what removes the row's package or tap.
        Trash,
        Button,
        /// The action is running.
        Spinner,
        /// Nothing to do: a label that says why.
        Badge,
    };

    Kind kind{Kind::None};
    /// Title of a button or badge; name of the action for menus and screen readers.
    QString title{};
    QString toolTip{};
    bool isEnabled{true};

    [[nodiscard]] bool canRun() const {
        return isEnabled && (kind == Kind::Trash || kind == Kind::Button);
    }
};

/// A small label behind a row's title.
struct RowTag final {
    enum class Tone { Outdated, Neutral };

    QString text{};
    Tone tone{Tone::Neutral};
};

/// One line of a list as its page describes it: a section's heading or an item.
///
/// Texts may come from anywhere: they are made harmless where they are drawn.
struct Row final {
    enum class Kind { Section, Item };
    enum class Tone { Accent, Formula, Cask };

    Kind kind{Kind::Item};
    /// Tells rows apart across reloads; empty for a section.
    QString id{};
    QString title{};
    /// Second line; an item without one has its title in the middle.
    QString subtitle{};
    /// With it the second line reads "subtitle → newVersion".
    QString newVersion{};
    QList<RowTag> tags{};
    QString symbol{};
    Tone symbolTone{Tone::Accent};
    /// Before the action, in digits of equal width.
    QString version{};
    RowAction action{};

    /// Everything the row says, in one line for a screen reader.
    [[nodiscard]] QString accessibleText() const;
};
