// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/place.h>

namespace Zantrel::Editing {

/// What stands for a node of the layout, seen from a place: what a condition's source, or the profile list of
/// a choice, is there.
class Scope {
public:
    /// The place of `node` that lies in the same item or profile as `from`, else in the next one outward,
    /// else in the database as a whole. Below a profile list that `from` isn't in, its default profile
    /// counts; in a list that `from` isn't in, no item does, and what is given is not valid, as for a node
    /// that no cursor reaches. Takes time in the depth of `node` only.
    static ParameterView Find(PlaceView const& from, LayoutNode const& node);
};

} // namespace Zantrel::Editing
