// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sstream>
#include <string>
#ifdef _LIBCPP_VERSION
#include <algorithm>
#include <limits>
#include <type_traits>
#endif

namespace Zantrel::Standard {

#ifdef _LIBCPP_VERSION
/// As much of a text as may belong to a real number. libc++ reads on at letters, as for a hexadecimal number
/// or a word, and then finds none.
inline std::wstring FrontOfNumber(std::wstring const& text) {
    bool hasExponent = false;
    auto const end = std::find_if(text.begin(), text.end(), [&hasExponent](wchar_t character) {
        bool const isExponent = (character | 0x20) == L'e' && !hasExponent;
        hasExponent = hasExponent || isExponent;
        bool const isLetter = (character | 0x20) >= L'a' && (character | 0x20) <= L'z';
        return isLetter && !isExponent;
    });
    return std::wstring(text.begin(), end);
}
#endif

/// What a wide stream with the global locale extracts from the front of a text: 0 where no number stands
/// there, and out of range the nearest limit. libc++ would give infinity for that.
template <class T> T ExtractNumber(std::wstring const& text) {
    T value{};
#ifdef _LIBCPP_VERSION
    if constexpr (std::is_same_v<T, double>) {
        std::wistringstream stream(FrontOfNumber(text));
        stream >> value;
        constexpr double most = std::numeric_limits<double>::max();
        return std::clamp(value, -most, most);
    }
#endif
    std::wistringstream stream(text);
    stream >> value;
    return value;
}

} // namespace Zantrel::Standard
