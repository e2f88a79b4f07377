// SPDX-License-Identifier: MIT
#pragma once

enum class FetchStatus;

/// The program that speaks with servers for the application, whose process so needs nothing of
/// what that takes, and keeps none of it: lumora-fetch PATIENCE ADDRESS [HEADER]...
namespace Fetch {

/// Gets what is at the address; prints it as it comes, and on standard error why there is no whole
/// answer. A server may say nothing for as many milliseconds as PATIENCE says, one or more; a
/// HEADER is such as "Accept: text/plain". An application that runs while it is upgraded calls a
/// newer program: arguments and statuses stay what they are.
///
/// Once standard input is at its end nobody waits for the answer any more, and the process ends.
[[nodiscard]] FetchStatus run(int argc, char* argv[]);

} // namespace Fetch
