// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/value_text.h>

#include "editing/findings.h"
#include "editing/number_text.h"

#include <zantrel/database/value_type.h>
#include <zantrel/database/visit_value.h>

#include <cstdint>
#include <type_traits>
#include <utility>

namespace Zantrel::Editing {

namespace {

std::wstring TextOf(std::int32_t value) { return std::to_wstring(value); }
std::wstring TextOf(bool value) { return value ? L"true" : L"false"; }
std::wstring TextOf(std::wstring const& value) { return value; }
std::wstring TextOf(KelAM::FileContent const& value) { return value.m_name; }

/// The value that a text says, and what it is if it says none.
std::optional<double> Parse(std::wstring_view text, TypeTag<double>) { return ParseDouble(text); }
std::optional<std::int32_t> Parse(std::wstring_view text, TypeTag<std::int32_t>) {
    return ParseInteger(text);
}
std::optional<bool> Parse(std::wstring_view text, TypeTag<bool>) { return ParseBool(text); }
std::optional<KelAM::FileContent> Parse(std::wstring_view text, TypeTag<KelAM::FileContent>) {
    KelAM::FileContent content;
    return content.LoadFile(std::wstring(text)) ? std::optional(std::move(content)) : std::nullopt;
}

template <class T> constexpr FindingKind NoSuchValue = FindingKind::NoNumber;
template <> constexpr FindingKind NoSuchValue<std::int32_t> = FindingKind::NoWholeNumber;
template <> constexpr FindingKind NoSuchValue<bool> = FindingKind::NoFlag;
template <> constexpr FindingKind NoSuchValue<KelAM::FileContent> = FindingKind::NoFile;

} // namespace

std::wstring TextOf(ParameterView const& cursor) {
    std::wstring text;
    VisitValue(cursor, [&](auto const& value) { text = TextOf(value); });
    return text;
}

std::optional<Finding> SetText(Place const& place, std::wstring_view text) {
    ParameterNode cursor = place.GetCursor();
    if (!place.IsValid() || !place.IsLeaf()) {
        return MakeFinding(FindingKind::NoValue, place, std::wstring(text));
    }
    return VisitValueType(cursor.m_pNode->m_type, [&](auto tag) -> std::optional<Finding> {
        using T = typename decltype(tag)::Type;
        if constexpr (std::is_same_v<T, NoValue>) {
            return MakeFinding(FindingKind::NoValue, place, std::wstring(text));
        } else if constexpr (std::is_same_v<T, std::wstring>) {
            cursor.SetValueFromText(std::wstring(text)); // which makes the value where there is none
            return std::nullopt;
        } else {
            auto value = Parse(text, tag);
            if (!value) {
                return MakeFinding(NoSuchValue<T>, place, std::wstring(text));
            }
            cursor.SetValue(*value);
            return std::nullopt;
        }
    });
}

} // namespace Zantrel::Editing
