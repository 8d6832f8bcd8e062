// SPDX-License-Identifier: Apache-2.0
//
// What a cursor shows to a user, whatever layout it stands on: value, unit, flags.
//
// To look at: VisitValue, which hands over a value in its type; the getters of flags, which throw where a
// place can't have the flag, so that FlagsOf asks the layout first; the fields of LayoutNode that tell how to
// show a value.

#include "common/cursors.h"

#include <charconv>
#include <cstdint>
#include <type_traits>

namespace Host {

namespace {

using Zantrel::LayoutNode;
using Zantrel::ParameterView;

std::wstring TextOf(double value) {
    char digits[32];
    return std::wstring(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}
std::wstring TextOf(std::int32_t value) { return std::to_wstring(value); }
std::wstring TextOf(bool value) { return value ? L"true" : L"false"; }
std::wstring TextOf(std::wstring const& value) { return value; }

/// With a checksum, so that two files of one size can be told apart (FNV-1a, 64 bits).
std::wstring TextOf(KelAM::FileContent const& value) {
    std::uint64_t sum = 14695981039346656037u;
    for (std::byte const byte : value.m_data) {
        sum = (sum ^ std::to_integer<std::uint64_t>(byte)) * 1099511628211u;
    }
    char digits[16];
    std::wstring const hex(digits, std::to_chars(digits, digits + sizeof digits, sum, 16).ptr);
    return L'"' + value.m_name + L"\", " + std::to_wstring(value.m_data.size()) + L" bytes #" + hex;
}

} // namespace

std::vector<Flag> FlagsOf(ParameterView const& node) {
    if (!node.IsValid()) {
        return {};
    }
    LayoutNode const& layout = *node.GetLayoutNode();
    std::vector<Flag> flags{{L"read-only", &ParameterView::GetReadOnly},
                            {L"hidden", &ParameterView::GetHidden}};
    if (layout.m_isProfileList || layout.m_isList) {
        flags.push_back({L"fixed entries", &ParameterView::GetDisableAddRemove});
    }
    if (layout.m_isProfileList && !node.IsContainer()) {
        flags.push_back({L"fixed name", &ParameterView::GetNameReadOnly});
        flags.push_back({L"can be deleted", &ParameterView::GetCanBeDeleted});
        flags.push_back({L"the user's default", &ParameterView::GetUserDefaultProfile});
    }
    return flags;
}

std::wstring PlainText(ParameterView const& leaf) {
    std::wstring text;
    VisitValue(leaf, [&](auto const& value) { text = TextOf(value); });
    return text;
}

std::wstring ValueText(ParameterView const& leaf) {
    std::wstring text;
    VisitValue(leaf, [&](auto const& value) {
        LayoutNode const& layout = *leaf.GetLayoutNode();
        text = TextOf(value);
        if constexpr (std::is_same_v<decltype(value), std::wstring const&>) {
            if (text.empty() && layout.m_type == Zantrel::StandardOptions) {
                return;
            }
            text = L'"' + text + L'"';
        }
        text = (layout.m_prefix.empty() ? L"" : layout.m_prefix + L' ') + text +
               (layout.m_postfix.empty() ? L"" : L' ' + layout.m_postfix);
    });
    return text;
}

std::wstring FlagsText(ParameterView const& node) {
    std::wstring text;
    for (Flag const& flag : FlagsOf(node)) {
        if ((node.*flag.get)()) {
            text += (text.empty() ? L"" : L", ") + std::wstring(flag.words);
        }
    }
    return text;
}

} // namespace Host
