// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/layout_node.h>
#include <zantrel/store/persistent_properties.h>

namespace Zantrel {

/// Whose the names of formatted entries are: the layout's, which outlives a database, or the bag's own.
enum class Names { OfTheLayout, OfTheBag };

/// Adds the content of `node` to `parent`, behind whatever stands there under its name, and gives its bag.
/// Throws std::bad_alloc, and `parent` may then have a part of it.
PersistentProperties& FormatNode(LayoutNode const& node, PersistentProperties& parent, Names names);

/// Fills `bag`, which stands for a node or for one item or profile of it, by the node's type alone. Where
/// `model`, a bag of the tree that `bag` is to go to, has the same names, they are shared. It may be null.
void FormatContent(LayoutNode const& node, PersistentProperties& bag, PersistentProperties* model);

} // namespace Zantrel
