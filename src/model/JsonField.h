// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>

/// One line of a record's table of fields: the key in the report and the member it fills.
///
/// A record lists its fields once, in a static fields() that returns a tuple of these;
/// decoding and encoding both walk that tuple. An optional member is an optional key:
/// it may be missing or null. Every other key is required.
template <class Record, class Member>
struct JsonField final {
    std::string_view key;
    Member Record::*member;

    static constexpr bool isRequired = [] {
        if constexpr (requires { typename Member::value_type; })
            return !std::is_same_v<Member, std::optional<typename Member::value_type>>;
        return true;
    }();
};

template <class Record, class Member>
JsonField(std::string_view, Member Record::*) -> JsonField<Record, Member>;

template <class T>
concept JsonRecord = requires {
    T::fields();
};
