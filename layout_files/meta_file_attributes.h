// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/layout_node.h>
#include <zantrel/sax/sax_writer.h>

namespace Zantrel {

/// Whether a meta file has two elements for the node: the container, and in it the one for what it contains.
bool IsContainer(LayoutNode const& node);

/// The attributes of a container's element.
void WriteContainerAttributes(LayoutNode const& node, KelSAX::ISAXWriter& writer);

/// The attributes of any other node's element, and of the one inside a container.
void WriteValueAttributes(LayoutNode const& node, KelSAX::ISAXWriter& writer);

} // namespace Zantrel
