// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace Zantrel::Text {

/// Compares by UTF-16 code unit, also where wchar_t holds code points, so that one database gives the same
/// bytes on every platform. Negative, zero, positive; a prefix comes first.
int Compare(std::wstring_view left, std::wstring_view right) noexcept;

/// The ordering of names in bags, indices and sets. Never allocates.
struct Utf16Less {
    using is_transparent = void;
    bool operator()(std::wstring_view left, std::wstring_view right) const noexcept {
        return Compare(left, right) < 0;
    }
};

} // namespace Zantrel::Text
