// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/layout_node.h>
#include <zantrel/store/persistent_properties.h>

namespace Zantrel {

/// Adds the content of `node` to `parent`, behind whatever stands there under its name, and gives its bag.
PersistentProperties& FormatNode(LayoutNode const& node, PersistentProperties& parent);

/// Fills `bag`, which stands for a node or for one item or profile of it, by the node's type alone.
void FormatContent(LayoutNode const& node, PersistentProperties& bag);

} // namespace Zantrel
