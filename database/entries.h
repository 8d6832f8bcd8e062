// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_node.h>

#include <string>
#include <vector>

namespace Zantrel {

/// Calls `visit` with the cursor on each item of a list, in order.
template <class Visitor> void VisitItems(ParameterNode const& list, Visitor visit) {
    unsigned long long const size = list.GetSize();
    for (unsigned long long index = 0; index < size; ++index) {
        visit(list.GetListNode(index));
    }
}

/// Calls `visit` with the name of each profile but the default one, in order, and the cursor that its name
/// leads to: of several of one name always the first.
template <class Visitor> void VisitProfiles(ParameterNode const& list, Visitor visit) {
    std::vector<std::wstring> names;
    list.GetProfiles(names);
    for (std::wstring const& name : names) {
        visit(name, list.GetProfile(name.c_str()));
    }
}

} // namespace Zantrel
