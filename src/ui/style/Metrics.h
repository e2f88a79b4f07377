// SPDX-License-Identifier: MIT
#pragma once

/// Every length of the interface that more than one place needs, in device-independent pixels.
namespace Metrics {

inline constexpr int windowWidth = 900;
inline constexpr int windowHeight = 600;
inline constexpr int minimumWindowWidth = 700;
inline constexpr int minimumWindowHeight = 450;

inline constexpr int sidebarMinimum = 160;
inline constexpr int sidebarIdeal = 180;
inline constexpr int sidebarMaximum = 220;

inline constexpr int headerHeight = 52;
/// From the edge of the content column to its text.
inline constexpr int contentMargin = 18;
/// What is read stays together in the middle of a wide column: the end of a row is that of the
/// line that the eye is in.
inline constexpr int widestContent = 880;
inline constexpr int widestSheet = 800;
inline constexpr int controlHeight = 30;
inline constexpr int controlRadius = 7;
inline constexpr int buttonRadius = 6;
inline constexpr int searchFieldWidth = 210;

inline constexpr int rowInset = 8;
inline constexpr int rowRadius = 8;
inline constexpr int rowSpacing = 12;
inline constexpr int rowIcon = 20;
inline constexpr int trashIcon = 16;
inline constexpr int smallSpinner = 14;

inline constexpr double sheetRadius = 12;

/// Between the icon or spinner of a page's state and its text.
inline constexpr int stateSpacing = 12;
inline constexpr int stateIcon = 48;

} // namespace Metrics
