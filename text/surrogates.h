// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

/// The arithmetic of UTF-16: characters from U+10000 on are a pair of a high and a low surrogate, and a
/// surrogate that is alone is no character. Wide texts may hold pairs on every platform, whatever the width
/// of wchar_t.
namespace Zantrel::Text {

inline constexpr char32_t FirstSurrogate = 0xD800;

constexpr bool IsHighSurrogate(char32_t unit) noexcept { return unit >= FirstSurrogate && unit < 0xDC00; }
constexpr bool IsLowSurrogate(char32_t unit) noexcept { return unit >= 0xDC00 && unit < 0xE000; }

/// Whether a value stands for a character by itself.
constexpr bool IsCodePoint(char32_t unit) noexcept {
    return unit < FirstSurrogate || (unit >= 0xE000 && unit <= 0x10FFFF);
}

constexpr char32_t JoinSurrogates(char32_t high, char32_t low) noexcept {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

/// The two halves of a character from U+10000 on.
constexpr char32_t HighSurrogateOf(char32_t character) noexcept { return 0xD7C0 + (character >> 10); }
constexpr char32_t LowSurrogateOf(char32_t character) noexcept { return 0xDC00 + (character & 0x3FF); }

/// Takes one code point from the front of `text`, which is not empty; what can't be joined comes as it
/// stands.
inline char32_t TakeCodePoint(std::wstring_view& text) noexcept {
    auto const first = static_cast<char32_t>(text.front());
    text.remove_prefix(1);
    if (IsHighSurrogate(first) && !text.empty()) {
        auto const second = static_cast<char32_t>(text.front());
        if (IsLowSurrogate(second)) {
            text.remove_prefix(1);
            return JoinSurrogates(first, second);
        }
    }
    return first;
}

} // namespace Zantrel::Text
