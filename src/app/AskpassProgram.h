// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The program of Lumora's own that asks for passwords.
namespace AskpassProgram {

/// Has the commands that are started from now on ask for passwords with it, if the user hasn't
/// chosen another one. It is beside the programs in this folder, as in a bundle, or else where
/// installed programs have what nobody calls by hand.
void offer(const QString& folder);

} // namespace AskpassProgram
