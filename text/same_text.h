// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Zantrel::Text {

/// Whether two texts are the same. For names, which are short: a call of the library of C costs more than the
/// comparison.
inline bool IsSame(std::wstring_view left, std::wstring_view right) noexcept {
    if (left.size() != right.size()) {
        return false;
    }
    using Word = std::uint64_t;
    constexpr std::size_t InWord = sizeof(Word) / sizeof(wchar_t);
    auto const differsAt = [&](std::size_t at) {
        Word ofLeft;
        Word ofRight;
        std::memcpy(&ofLeft, left.data() + at, sizeof(Word));
        std::memcpy(&ofRight, right.data() + at, sizeof(Word));
        return ofLeft != ofRight;
    };
    if (left.size() < InWord) {
        return left == right;
    }
    for (std::size_t at = 0; at + InWord < left.size(); at += InWord) {
        if (differsAt(at)) {
            return false;
        }
    }
    return !differsAt(left.size() - InWord); // overlaps the one before
}

} // namespace Zantrel::Text
