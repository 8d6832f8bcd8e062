// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace Zantrel::Text {

/// Compares by UTF-16 code unit, also where wchar_t holds code points, so that one database gives the same
/// bytes on every platform: the order of names in bags, indices and sets. A pair of surrogates and its code
/// point are equal. Negative, zero, positive; a prefix comes first. Never allocates.
int Compare(std::wstring_view left, std::wstring_view right) noexcept;

/// That order, for containers that are asked for names they don't own.
struct Utf16Less {
    using is_transparent = void;
    bool operator()(std::wstring_view left, std::wstring_view right) const noexcept {
        return Compare(left, right) < 0;
    }
};

} // namespace Zantrel::Text
