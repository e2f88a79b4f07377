// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPalette>

class QWidget;

/// Every colour of the interface, once for light and once for dark surroundings, and both again for
/// whoever needs stronger contrasts.
///
/// Which of them applies is read off a widget's palette, so that there is nothing to
/// notify: a new palette repaints the widgets, and they find the other theme.
struct Theme final {
    QColor content;
    QColor sidebar;
    /// Surface of fields and buttons.
    QColor field;
    QColor text;
    QColor secondaryText;
    QColor hairline;
    QColor fieldBorder;
    /// Also the blue that stands for formulae.
    QColor accent;
    /// Text on a surface filled with the accent.
    QColor onAccent;
    QColor selection;
    QColor hover;
    QColor pressed;
    /// Orange: something is outdated, or went wrong.
    QColor outdated;
    QColor outdatedTag;
    QColor neutralTag;
    QColor countPill;
    QColor onCountPill;
    /// Green: installed, or well.
    QColor good;
    /// Purple: stands for casks.
    QColor cask;
    /// Red: what removes something.
    QColor destructive;
    /// Text on a surface filled with it.
    QColor onDestructive;
    /// Three of the above where a tint or a selection lies below them: strong enough to read.
    QColor secondaryOnTint;
    QColor outdatedOnTint;
    QColor goodOnTint;
    /// Behind command output.
    QColor output;
    /// Behind the strip that tells of a failed load, and behind that of a failed operation.
    QColor failure;
    QColor operationFailure;
    /// Over the window while a sheet is open.
    QColor scrim;
    QColor sheetShadow;
    /// A card that asks something, and what is over the window then.
    QColor card;
    QColor cardScrim;
    QColor overlayShadow;
    QColor overlay;
    /// The trough of a segmented picker, and its chosen segment.
    QColor trough;
    QColor segment;

    enum class Contrast { Usual, Higher };

    [[nodiscard]] static const Theme& light(Contrast contrast = Contrast::Usual);
    [[nodiscard]] static const Theme& dark(Contrast contrast = Contrast::Usual);
    /// The theme that fits the widget's palette.
    [[nodiscard]] static const Theme& of(const QWidget* widget);
    [[nodiscard]] static const Theme& of(const QPalette& palette);

    /// The toolkit's view of this theme.
    [[nodiscard]] QPalette palette() const;
};

/// One of a theme's colours, whichever theme applies.
using ThemeColor = QColor Theme::*;

/// The same colour with the given opacity, 0 to 1.
[[nodiscard]] QColor withOpacity(QColor color, double opacity);
