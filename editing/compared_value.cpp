// SPDX-License-Identifier: Apache-2.0
#include "editing/compared_value.h"

#include "editing/value_conversion.h"

#include <zantrel/database/visit_value.h>
#include <zantrel/editing/value_text.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace Zantrel::Editing {

namespace {

/// FNV-1a of 64 bits, as 16 digits.
/// Tells two contents apart for a person, and decides nothing: whether they are the same is found out by
/// their bytes.
std::wstring Checksum(std::vector<std::byte> const& bytes) {
    std::uint64_t sum = 0xCBF29CE484222325;
    for (std::byte const byte : bytes) {
        sum = (sum ^ static_cast<std::uint64_t>(byte)) * 0x100000001B3;
    }
    std::wstring digits(16, L'0');
    for (std::size_t i = digits.size(); i != 0; --i, sum >>= 4) {
        digits[i - 1] = L"0123456789abcdef"[sum & 15];
    }
    return digits;
}

// What conditions are compared with. Flags have capital letters here, as layouts say them, and none in
// TextOf, as parameter files do.
template <class T> std::wstring Format(T const& value, LayoutNode const&) { return TextOf(value); }
std::wstring Format(double value, LayoutNode const& node) { return TextOf(value, node.m_precision); }
std::wstring Format(bool value, LayoutNode const&) { return value ? L"True" : L"False"; }

} // namespace

std::optional<std::wstring> FormattedText(ParameterView const& cursor) {
    std::optional<std::wstring> text;
    if (!cursor.IsContainer()) {
        VisitValue(cursor, [&](auto const& value) { text = Format(value, *cursor.GetLayoutNode()); });
    }
    return text;
}

std::wstring ShownText(ParameterView const& cursor) {
    auto const* const content = cursor.FindValue<KelAM::FileContent>();
    return content == nullptr ? TextOf(cursor)
                              : content->m_name + L", " + std::to_wstring(content->m_data.size()) +
                                    L" bytes, checksum " + Checksum(content->m_data);
}

bool IsSameValue(ParameterView const& first, ParameterView const& second) {
    bool isSame = false;
    bool const isCompared = VisitValue(first, [&](auto const& value) {
        using T = std::decay_t<decltype(value)>;
        T const* const other = second.FindValue<T>();
        isSame = other != nullptr ? value == *other : ShownText(first) == ShownText(second);
        if constexpr (std::is_same_v<T, double>) {
            isSame = isSame || (other != nullptr && std::isnan(value) && std::isnan(*other));
        }
    });
    return isCompared ? isSame : ShownText(second).empty();
}

} // namespace Zantrel::Editing
