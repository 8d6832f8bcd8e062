// SPDX-License-Identifier: Apache-2.0
#include "common/cursors.h"

#include <charconv>

namespace Host {

namespace {

using Zantrel::LayoutNode;
using Zantrel::ParameterNode;

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

std::vector<Flag> FlagsOf(ParameterNode const& node) {
    std::vector<Flag> flags{{L"read-only", &ParameterNode::GetReadOnly},
                            {L"hidden", &ParameterNode::GetHidden}};
    if (node.m_pNode->m_isProfileList || node.m_pNode->m_isList) {
        flags.push_back({L"fixed entries", &ParameterNode::GetDisableAddRemove});
    }
    if (node.m_pNode->m_isProfileList && !node.m_isContainer) {
        flags.push_back({L"fixed name", &ParameterNode::GetNameReadOnly});
        flags.push_back({L"can be deleted", &ParameterNode::GetCanBeDeleted});
        flags.push_back({L"the user's default", &ParameterNode::GetUserDefaultProfile});
    }
    return flags;
}

std::wstring PlainText(ParameterNode const& leaf) {
    std::wstring text;
    VisitValueType(leaf.m_pNode->m_type, [&](auto type) {
        if (auto const* value = FindValue<decltype(type)>(leaf)) {
            text = TextOf(*value);
        }
    });
    return text;
}

std::wstring ValueText(ParameterNode const& leaf) {
    LayoutNode const& layout = *leaf.m_pNode;
    std::wstring text;
    VisitValueType(layout.m_type, [&](auto type) {
        auto const* value = FindValue<decltype(type)>(leaf);
        if (value == nullptr) {
            return;
        }
        text = TextOf(*value);
        if constexpr (std::is_same_v<decltype(type), std::wstring>) {
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

std::wstring FlagsText(ParameterNode const& node) {
    std::wstring text;
    for (Flag const& flag : FlagsOf(node)) {
        if ((node.*flag.get)()) {
            text += (text.empty() ? L"" : L", ") + std::wstring(flag.words);
        }
    }
    return text;
}

} // namespace Host
