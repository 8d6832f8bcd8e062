// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/layout_node.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Zantrel::Editing {

/// What a schema says of a leaf's value beyond its type, and what it has no words for.
struct SchemaFacets {
    std::vector<std::pair<std::string_view, std::wstring>> rows; ///< element without prefix, and its value
    std::vector<std::wstring> notes;                             ///< sentences for a person
};

/// Of a node with children there are none: files don't hold its value.
SchemaFacets FacetsOf(LayoutNode const& node);

} // namespace Zantrel::Editing
