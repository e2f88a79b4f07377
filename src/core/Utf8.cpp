// SPDX-License-Identifier: MIT
#include "Utf8.h"

#include <cstdint>
#include <cstring>

namespace {

struct Sequence {
    int length;
    // The second byte carries the limits that rule out overlong forms, surrogates and
    // values beyond U+10FFFF; all later bytes are plain continuation bytes.
    unsigned char secondLow;
    unsigned char secondHigh;
};

Sequence sequenceFor(unsigned char first) {
    if (first >= 0xC2 && first <= 0xDF)
        return {2, 0x80, 0xBF};
    if (first == 0xE0)
        return {3, 0xA0, 0xBF};
    if (first == 0xED)
        return {3, 0x80, 0x9F};
    if (first >= 0xE1 && first <= 0xEF)
        return {3, 0x80, 0xBF};
    if (first == 0xF0)
        return {4, 0x90, 0xBF};
    if (first >= 0xF1 && first <= 0xF3)
        return {4, 0x80, 0xBF};
    if (first == 0xF4)
        return {4, 0x80, 0x8F};
    return {0, 0, 0};
}

/// Reports of megabytes are almost all ASCII: eight bytes at a time there.
const unsigned char* skipAscii(const unsigned char* at, const unsigned char* end) {
    constexpr std::uint64_t highBits = 0x8080808080808080U;
    for (std::uint64_t word = 0; end - at >= static_cast<std::ptrdiff_t>(sizeof word);
         at += sizeof word) {
        std::memcpy(&word, at, sizeof word);
        if ((word & highBits) != 0)
            break;
    }
    while (at != end && *at < 0x80)
        ++at;
    return at;
}

} // namespace

bool isValidUtf8(std::string_view bytes) {
    const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto* const end = at + bytes.size();
    for (at = skipAscii(at, end); at != end; at = skipAscii(at, end)) {
        const Sequence sequence = sequenceFor(*at);
        if (sequence.length == 0 || end - at < sequence.length)
            return false;
        if (at[1] < sequence.secondLow || at[1] > sequence.secondHigh)
            return false;
        for (int i = 2; i < sequence.length; ++i) {
            if ((at[i] & 0xC0) != 0x80)
                return false;
        }
        at += sequence.length;
    }
    return true;
}
