// SPDX-License-Identifier: MIT
#pragma once

#include "style/Theme.h"

class SystemAppearance;

/// How the whole application looks.
namespace Look {

/// Gives it Lumora's icon, style and fonts; before the first widget is made.
void setUp();

/// Gives it the dark or the light theme's colours; at any time.
void setDark(bool isDark, Theme::Contrast contrast = Theme::Contrast::Usual);

/// Makes it what the desktop wishes, now and whenever that changes.
void follow(const SystemAppearance& desktop);

} // namespace Look
