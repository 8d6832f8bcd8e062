// SPDX-License-Identifier: Apache-2.0
//
// What a cursor shows to a user, whatever layout it stands on: value, unit, flags.
//
// To look at: VisitValue, which hands over a value in its type; the getters of flags, which throw where a
// place can't have the flag, so that CanHave asks the layout first; the fields of LayoutNode that tell how to
// show a value.

#include "common/cursors.h"

#include <zantrel/editing/value_text.h>

#include <charconv>
#include <cstdint>
#include <type_traits>

namespace Host {

namespace {

using Zantrel::LayoutNode;
using Zantrel::ParameterView;

/// With a checksum, so that two files of one size can be told apart (FNV-1a, 64 bits).
std::wstring AttachmentText(KelAM::FileContent const& value) {
    std::uint64_t sum = 14695981039346656037u;
    for (std::byte const byte : value.m_data) {
        sum = (sum ^ std::to_integer<std::uint64_t>(byte)) * 1099511628211u;
    }
    char digits[16];
    std::wstring const hex(digits, std::to_chars(digits, digits + sizeof digits, sum, 16).ptr);
    return L'"' + value.m_name + L"\", " + std::to_wstring(value.m_data.size()) + L" bytes #" + hex;
}

struct Flag {
    enum class Of { Any, Container, Profile };
    wchar_t const* word;  ///< that files have for it
    wchar_t const* words; ///< what it means to the user when it is set
    Of isOf;
    bool (ParameterView::*get)() const;
};
constexpr Flag AllFlags[] = {
    {L"ReadOnly", L"read-only", Flag::Of::Any, &ParameterView::GetReadOnly},
    {L"Hidden", L"hidden", Flag::Of::Any, &ParameterView::GetHidden},
    {L"DisableAddRemove", L"fixed entries", Flag::Of::Container, &ParameterView::GetDisableAddRemove},
    {L"NameReadOnly", L"fixed name", Flag::Of::Profile, &ParameterView::GetNameReadOnly},
    {L"CanBeDeleted", L"can be deleted", Flag::Of::Profile, &ParameterView::GetCanBeDeleted},
    {L"UserDefaultProfile", L"the user's default", Flag::Of::Profile, &ParameterView::GetUserDefaultProfile},
};

/// Asking for a flag that the place can't have would throw.
bool CanHave(ParameterView const& node, Flag const& flag) {
    LayoutNode const& layout = *node.GetLayoutNode();
    switch (flag.isOf) {
    case Flag::Of::Container:
        return layout.m_isProfileList || layout.m_isList;
    case Flag::Of::Profile:
        return layout.m_isProfileList && !node.IsContainer();
    default:
        return true;
    }
}

} // namespace

std::wstring FlagWords(std::wstring const& word) {
    for (Flag const& flag : AllFlags) {
        if (word == flag.word) {
            return flag.words;
        }
    }
    return word;
}

std::wstring PlainText(ParameterView const& leaf) {
    auto const* const attachment = leaf.FindValue<KelAM::FileContent>();
    return attachment != nullptr ? AttachmentText(*attachment) : Zantrel::Editing::TextOf(leaf);
}

std::wstring ValueText(ParameterView const& leaf) {
    std::wstring text;
    VisitValue(leaf, [&](auto const& value) {
        LayoutNode const& layout = *leaf.GetLayoutNode();
        text = PlainText(leaf);
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
    for (Flag const& flag : AllFlags) {
        if (node.IsValid() && CanHave(node, flag) && (node.*flag.get)()) {
            text += (text.empty() ? L"" : L", ") + std::wstring(flag.words);
        }
    }
    return text;
}

} // namespace Host
