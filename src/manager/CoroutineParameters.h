// SPDX-License-Identifier: MIT
#pragma once

#include <type_traits>

namespace detail {

template <class>
inline constexpr bool hasOnlyValues = false;
template <class Result, class Class, class... Parameters>
inline constexpr bool
    hasOnlyValues<Result (Class::*)(Parameters...)> = (!std::is_reference_v<Parameters> && ...);

} // namespace detail

/// Whether the member functions take all their parameters by value. A coroutine must: what
/// a reference refers to may be gone when the coroutine resumes.
template <auto... Functions>
inline constexpr bool takesParametersByValue = (detail::hasOnlyValues<decltype(Functions)> && ...);
