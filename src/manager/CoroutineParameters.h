// SPDX-License-Identifier: MIT
#pragma once

#include <type_traits>

namespace detail {

template <class>
inline constexpr bool hasOnlyValues = false;
template <class Result, class... Parameters>
inline constexpr bool
    hasOnlyValues<Result (*)(Parameters...)> = (!std::is_reference_v<Parameters> && ...);
template <class Result, class Class, class... Parameters>
inline constexpr bool hasOnlyValues<Result (Class::*)(Parameters...)> =
    hasOnlyValues<Result (*)(Parameters...)>;
template <class Result, class Class, class... Parameters>
inline constexpr bool hasOnlyValues<Result (Class::*)(Parameters...) const> =
    hasOnlyValues<Result (*)(Parameters...)>;

} // namespace detail

/// Whether the functions take all their parameters by value. A coroutine must: what a
/// reference refers to may be gone when the coroutine resumes. A private one asserts it in
/// its own body, where it may name itself.
template <auto... Functions>
inline constexpr bool takesParametersByValue = (detail::hasOnlyValues<decltype(Functions)> && ...);
