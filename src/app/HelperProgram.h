// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The programs that come with Lumora and that nobody calls by hand.
namespace HelperProgram {

/// The path of one that is beside the programs in this folder, as in a bundle, or else where
/// installed programs have theirs. Empty where there is none.
[[nodiscard]] QString near(const QString& folder, const QString& name);

} // namespace HelperProgram
