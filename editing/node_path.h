// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/layout_node.h>

#include <string>

namespace Zantrel::Editing {

/// The names from below the root of the node's tree, joined by "/"; empty for null. By owners, since in a
/// copied tree the parents are those of the source.
std::wstring PathOf(LayoutNode const* node);

} // namespace Zantrel::Editing
