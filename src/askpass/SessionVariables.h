// SPDX-License-Identifier: MIT
#pragma once

/// The variables that a program needs to show a window in the user's session and language.
///
/// brew runs everything in an environment that it has cleared of most of them, but for what
/// begins with its own name: they travel in a variable that does.
namespace SessionVariables {

/// "dark" or "light" where Lumora has been told how to look, and doesn't follow the desktop.
inline constexpr const char* appearance = "LUMORA_APPEARANCE";

/// Puts this process's into the environment of the commands that it will start.
void passOn();

/// Has them in this process as they were in the one that passed them on, if one did.
void takeUp();

} // namespace SessionVariables
