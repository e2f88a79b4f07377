// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The program of Lumora's own that asks for passwords.
namespace AskpassProgram {

/// Has the commands that are started from now on ask for passwords with it, if the user hasn't
/// chosen another one, and if it is near this folder (HelperProgram).
void offer(const QString& folder);

} // namespace AskpassProgram
