// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "editing/number_text.h"

#include <zantrel/database/parameter_node.h>
#include <zantrel/database/parameter_view.h>
#include <zantrel/database/value_type.h>
#include <zantrel/editing/finding.h>
#include <zantrel/layout/layout_node.h>
#include <zantrel/text/string_conversion.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>
#ifndef __wasi__
#include <filesystem>
#endif

namespace Zantrel::Editing {

/// A value as an exact text; see TextOf of a cursor.
inline std::wstring TextOf(std::int32_t value) { return std::to_wstring(value); }
inline std::wstring TextOf(bool value) { return value ? L"true" : L"false"; }
inline std::wstring TextOf(std::wstring const& value) { return value; }
inline std::wstring TextOf(KelAM::FileContent const& value) { return value.m_name; }

/// The value that a text says, if all of it says one.
inline std::optional<double> ParseValue(std::wstring_view text, TypeTag<double>) { return ParseDouble(text); }
inline std::optional<std::int32_t> ParseValue(std::wstring_view text, TypeTag<std::int32_t>) {
    return ParseInteger(text);
}
inline std::optional<bool> ParseValue(std::wstring_view text, TypeTag<bool>) { return ParseBool(text); }
inline std::optional<std::wstring> ParseValue(std::wstring_view text, TypeTag<std::wstring>) {
    return std::wstring(text);
}
/// Of the file at that path: an ordinary one, since a device or a pipe may never end.
inline std::optional<KelAM::FileContent> ParseValue(std::wstring_view text, TypeTag<KelAM::FileContent>) {
#ifndef __wasi__ // which has no others, nor this part of the standard library
    std::string const utf8 = StringConversion::NativeToUtf8(text);
    std::error_code error;
    bool const isFile =
        std::filesystem::is_regular_file(std::u8string(utf8.begin(), utf8.end()), error) && !error;
#else
    bool const isFile = true;
#endif
    KelAM::FileContent content;
    return isFile && content.LoadFile(std::wstring(text)) ? std::optional(std::move(content)) : std::nullopt;
}

/// Whether a value can be set: it is there, or would be made, as that of a choice of the driver's. The caller
/// sees to it that the node is one that HasOwnContent.
template <class T> bool CanTake(ParameterView const& cursor) {
    bool const isMade = std::is_same_v<T, std::wstring> && !cursor.IsContainer() &&
                        cursor.GetLayoutNode()->m_type == eTypeLayoutNode::StandardOptions;
    return cursor.FindValue<T>() != nullptr || isMade;
}

/// Of siblings that share a name the first has the place, and its type; what was made for another one would
/// stand in that one's content. Takes time in the number of the siblings.
inline bool HasOwnContent(LayoutNode const& node) {
    LayoutNode const* const owner = node.GetOwner();
    if (owner != nullptr) {
        for (LayoutNode const* const sibling : owner->m_children) {
            if (sibling == &node || sibling->m_name == node.m_name) {
                return sibling == &node;
            }
        }
    }
    return true;
}

/// The same, of any node.
template <class T> bool CanTakeHere(ParameterView const& cursor) {
    return CanTake<T>(cursor) && (cursor.FindValue<T>() != nullptr || HasOwnContent(*cursor.GetLayoutNode()));
}

/// Sets what can be taken.
template <class T> void SetValue(ParameterNode cursor, T const& value) {
    if constexpr (std::is_same_v<T, std::wstring>) {
        if (cursor.FindValue<T>() == nullptr) {
            return cursor.SetValueFromText(value);
        }
    }
    cursor.SetValue(value);
}

/// What a text is that says no value of a type.
template <class T> inline constexpr FindingKind NoSuchValue = FindingKind::NoNumber;
template <> inline constexpr FindingKind NoSuchValue<std::int32_t> = FindingKind::NoWholeNumber;
template <> inline constexpr FindingKind NoSuchValue<bool> = FindingKind::NoFlag;
template <> inline constexpr FindingKind NoSuchValue<KelAM::FileContent> = FindingKind::NoFile;

} // namespace Zantrel::Editing
