// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/value_text.h>

#include "editing/findings.h"
#include "editing/value_conversion.h"

#include <zantrel/database/value_type.h>
#include <zantrel/database/visit_value.h>

#include <type_traits>

namespace Zantrel::Editing {

std::wstring TextOf(ParameterView const& cursor) {
    std::wstring text;
    VisitValue(cursor, [&](auto const& value) { text = TextOf(value); });
    return text;
}

std::optional<Finding> SetText(Place const& place, std::wstring_view text) {
    ParameterNode const cursor = place.GetCursor();
    if (!place.IsValid() || !place.IsLeaf()) {
        return MakeFinding(FindingKind::NoValue, place, std::wstring(text));
    }
    return VisitValueType(cursor.m_pNode->m_type, [&](auto tag) -> std::optional<Finding> {
        using T = typename decltype(tag)::Type;
        if constexpr (!std::is_same_v<T, NoValue>) {
            // The node says a type, but a second node of a name has no content of its own: what stands there
            // may be of another one.
            if (CanTakeHere<T>(cursor)) {
                auto const value = ParseValue(text, tag);
                if (!value) {
                    return MakeFinding(NoSuchValue<T>, place, std::wstring(text));
                }
                SetValue(cursor, *value);
                return std::nullopt;
            }
        }
        return MakeFinding(FindingKind::NoValue, place, std::wstring(text));
    });
}

} // namespace Zantrel::Editing
