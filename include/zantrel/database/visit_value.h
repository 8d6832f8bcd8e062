// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_view.h>
#include <zantrel/database/value_type.h>
#include <zantrel/layout/layout_node.h>

#include <type_traits>

#include <zantrel/macros_away.h>

namespace Zantrel {

/// Calls `visit` with the value at the cursor, typed as the layout says: a std::int32_t, double, bool,
/// std::wstring or KelAM::FileContent. False, and no call, where no value stands: on a group or container, on
/// a cursor without content, and on a StandardOptions node that nobody has set.
template <class Visitor> bool VisitValue(ParameterView const& cursor, Visitor&& visit) {
    LayoutNode const* const node = cursor.GetLayoutNode();
    return node != nullptr && VisitValueType(node->m_type, [&](auto tag) {
               using T = typename decltype(tag)::Type;
               if constexpr (!std::is_same_v<T, NoValue>) {
                   if (T const* const value = cursor.FindValue<T>()) {
                       visit(*value);
                       return true;
                   }
               }
               return false;
           });
}

} // namespace Zantrel

#include <zantrel/macros_back.h>
