// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/layout_node.h>
#include <zantrel/store/persistent_properties.h>

namespace Zantrel {

class FittingShapes;
class NodeShape;

/// Adds the content of `node` to `parent`, behind whatever stands there under its name, and gives its bag.
/// Throws std::bad_alloc, and `parent` may then have a part of it. Names of entries are their bags' own.
PersistentProperties& FormatNode(LayoutNode const& node, PersistentProperties& parent);
/// The same in a database: names are the layout's, which outlives it. `shape` is that of the node's content,
/// or null; it is used as far as `fitting` has it.
PersistentProperties& FormatNode(LayoutNode const& node, PersistentProperties& parent, NodeShape const* shape,
                                 FittingShapes&& fitting);

/// Fills `bag`, which stands for a node or for one item or profile of it, by the node's type alone. Where
/// `model`, a bag of the tree that `bag` is to go to, has the same names, they are shared, and its shape,
/// where `fitting` has that. It may be null.
void FormatContent(LayoutNode const& node, PersistentProperties& bag, PersistentProperties* model,
                   FittingShapes& fitting);

} // namespace Zantrel
