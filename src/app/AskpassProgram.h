// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The program in Lumora's bundle that asks for passwords.
namespace AskpassProgram {

/// Has the commands that are started from now on ask for passwords with the program in this
/// folder, if it is there and the user hasn't chosen another one.
void offer(const QString& folder);

} // namespace AskpassProgram
