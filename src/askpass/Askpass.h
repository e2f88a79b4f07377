// SPDX-License-Identifier: MIT
#pragma once

/// The program that `sudo -A` starts to have somebody asked for a password.
namespace Askpass {

/// Shows the prompt (UTF-8) with a field below it, prints what is typed there with a line end
/// and returns 0. Prints nothing and returns 1 if the user cancels, if whoever asked is gone, if
/// there is no display or if another prompt of this session is open; but for the first two,
/// standard error says why.
///
/// Makes the process's QApplication; call it once.
[[nodiscard]] int run(const char* prompt);

} // namespace Askpass
