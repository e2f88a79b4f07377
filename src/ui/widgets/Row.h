// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

#include <functional>
#include <optional>

/// Something that can be done at the trailing end of a row, or stands there in its place.
struct RowAction final {
    enum class Kind {
        /// A trash can, for what removes the row's package or tap.
        Trash,
        Button,
        /// The action is running.
        Spinner,
        /// Nothing to do: a label that says why.
        Badge,
    };

    Kind kind{};
    /// Title of a button or badge; name of the action for menus and screen readers.
    QString title{};
    QString toolTip{};
    bool isEnabled{true};
    /// Empty where there is nothing to do.
    std::function<void()> onTrigger{};

    [[nodiscard]] bool canTrigger() const { return isEnabled && onTrigger; }

    void trigger() const {
        if (canTrigger())
            onTrigger();
    }
};

/// A small label behind a row's title.
struct RowTag final {
    enum class Tone { Outdated, Neutral };

    QString text{};
    Tone tone{Tone::Neutral};
    /// Says more of it, on hover and to a screen reader; asked only then.
    std::function<QString()> explain{};

    [[nodiscard]] QString explanation() const { return explain ? explain() : QString(); }
};

/// One line of a list as its page describes it.
///
/// Texts may come from anywhere: they are made harmless where they are drawn.
struct Row final {
    enum class Tone { Accent, Formula, Cask };

    /// Tells rows apart across reloads.
    QString id{};
    QString title{};
    /// Second line; a row without one has its title in the middle.
    QString subtitle{};
    /// With it the second line reads "subtitle → newVersion".
    QString newVersion{};
    QList<RowTag> tags{};
    QString symbol{};
    Tone symbolTone{Tone::Accent};
    /// Before the actions, in digits of equal width.
    QString version{};
    /// From left to right.
    QList<RowAction> actions{};

    /// Everything the row says, in one line for a screen reader.
    [[nodiscard]] QString accessibleText() const;
    /// What it says on hover only, likewise.
    [[nodiscard]] QString accessibleDescription() const;
};

/// What a row looks like beyond its description. Its actions, of which only those that can be
/// triggered count here, are named by their places.
struct RowState final {
    bool isSelected{};
    bool isHovered{};
    bool isCurrent{};
    /// The line below it separates it from another row.
    bool hasHairline{};
    std::optional<qsizetype> hoveredAction{};
    std::optional<qsizetype> pressedAction{};
    std::optional<qsizetype> currentAction{};
};
