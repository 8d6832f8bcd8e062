// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Zantrel::Text {

/// Whether both are the same bytes. For names, which are too short for a call of memcmp to be worth it: words
/// are compared, of which the last one may overlap the one before.
inline bool SameBytes(std::string_view left, std::string_view right) noexcept {
    auto const areSame = [&]<class Word>(std::size_t at, Word) {
        Word leftWord, rightWord;
        std::memcpy(&leftWord, left.data() + at, sizeof(Word));
        std::memcpy(&rightWord, right.data() + at, sizeof(Word));
        return leftWord == rightWord;
    };
    std::size_t const size = left.size();
    if (size != right.size()) {
        return false;
    }
    if (size >= sizeof(std::uint64_t)) {
        std::size_t const last = size - sizeof(std::uint64_t);
        for (std::size_t at = 0; at < last; at += sizeof(std::uint64_t)) {
            if (!areSame(at, std::uint64_t())) {
                return false;
            }
        }
        return areSame(last, std::uint64_t());
    }
    if (size >= sizeof(std::uint32_t)) {
        return areSame(0, std::uint32_t()) && areSame(size - sizeof(std::uint32_t), std::uint32_t());
    }
    for (std::size_t at = 0; at < size; ++at) {
        if (left[at] != right[at]) {
            return false;
        }
    }
    return true;
}

} // namespace Zantrel::Text
