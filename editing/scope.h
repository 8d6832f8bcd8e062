// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/place.h>

#include <cstddef>

namespace Zantrel::Editing {

/// What stands for a node of the layout, seen from a place: what a condition's source, or the profile list of
/// a choice, is there.
class Scope {
public:
    /// The place of `node` that lies in the same item or profile as `from`, else in the next one outward,
    /// else in the database as a whole. Below a profile list that `from` isn't in, its default profile
    /// counts; in a list that `from` isn't in, no item does, and what is given is not valid, as for a node
    /// that no cursor reaches. Takes time in the depth of `node` only.
    template <class Cursor> static Cursor Find(BasicPlace<Cursor> const& from, LayoutNode const& node) {
        return Find(from, from.GetDepth(), node);
    }
    /// The same seen from the place `depth` steps below the profile editor that `from` lies in, or is.
    template <class Cursor>
    static Cursor Find(BasicPlace<Cursor> const& from, std::size_t depth, LayoutNode const& node);
};

extern template ParameterNode Scope::Find(Place const& from, std::size_t depth, LayoutNode const& node);
extern template ParameterView Scope::Find(PlaceView const& from, std::size_t depth, LayoutNode const& node);

} // namespace Zantrel::Editing
