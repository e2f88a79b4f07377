// SPDX-License-Identifier: MIT
#pragma once

/// How the whole application looks.
namespace Look {

/// Gives it Lumora's icon, style and fonts; before the first widget is made.
void setUp();

/// Gives it the dark or the light theme's colours; at any time.
void setDark(bool isDark);

} // namespace Look
