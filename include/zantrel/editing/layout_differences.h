// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/export.h>
#include <zantrel/layout/parameter_layout.h>

#include <string>
#include <vector>

namespace Zantrel::Editing {

/// One thing in which two layouts differ.
struct LayoutDifference {
    enum class Kind {
        Added,    ///< only the second has the node, with all below it
        Removed,  ///< only the first has it
        Moved,    ///< stands at another place among the siblings that both have
        Attribute ///< `what` names it in the words of the meta file, or as the field where there is none
    };
    Kind kind = Kind::Attribute;
    std::wstring path; ///< names from below the root, joined by "/"
    std::wstring what;
    std::wstring before; ///< of an attribute its value; of what was moved the name that it stood behind
    std::wstring after;
    LayoutNode const* first = nullptr;  ///< null where only the second has the node
    LayoutNode const* second = nullptr; ///< null where only the first has it
};

/// In what the second layout differs from the first: every field of every node but addresses; conditions and
/// profile lists by the paths of the nodes that they name. Nodes are matched by name, further ones of a name
/// by their turn. Moved are the fewest without which the others stand in the same order. In the order of the
/// second, with what only the first has behind what it stood behind. Takes time in the nodes but for that
/// order, which is sorted.
ZANTREL_EDITING_EXPORT std::vector<LayoutDifference> LayoutDifferences(ParameterLayout const& first,
                                                                       ParameterLayout const& second);

} // namespace Zantrel::Editing
