// SPDX-License-Identifier: MIT
#pragma once

/// Prepares this process for the children it will start; call it once, before any thread.
///
/// Standard input becomes the null device, which the children inherit: a `brew` that
/// asks a question finds end of file instead of waiting for an answer nobody can give.
/// SIGCHLD gets its default action, without which no exit status can be collected.
void prepareForChildProcesses();
