// SPDX-License-Identifier: Apache-2.0
#include "editing/formatted_text.h"

#include "editing/number_text.h"

#include <zantrel/database/visit_value.h>

#include <cstdint>

namespace Zantrel::Editing {

namespace {

std::wstring Format(double value, LayoutNode const& node) { return TextOf(value, node.m_precision); }
std::wstring Format(std::int32_t value, LayoutNode const&) { return std::to_wstring(value); }
std::wstring Format(bool value, LayoutNode const&) { return value ? L"True" : L"False"; }
std::wstring Format(std::wstring const& value, LayoutNode const&) { return value; }
std::wstring Format(KelAM::FileContent const& value, LayoutNode const&) { return value.m_name; }

} // namespace

std::optional<std::wstring> FormattedText(ParameterView const& cursor) {
    std::optional<std::wstring> text;
    if (!cursor.IsContainer()) {
        VisitValue(cursor, [&](auto const& value) { text = Format(value, *cursor.GetLayoutNode()); });
    }
    return text;
}

} // namespace Zantrel::Editing
