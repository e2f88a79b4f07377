// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

/// Whether the bytes are well-formed UTF-8 from beginning to end: no overlong form,
/// no surrogate, nothing above U+10FFFF, no sequence cut short.
[[nodiscard]] bool isValidUtf8(std::string_view bytes);
