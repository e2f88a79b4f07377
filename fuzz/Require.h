// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>

/// Ends the process, for the fuzzer to keep the input, unless what must be true is.
void require(bool isTrue, const char* what);

/// Bytes as texts from outside arrive: what is no UTF-8 is replaced.
[[nodiscard]] QString textOf(const std::uint8_t* data, std::size_t size);
