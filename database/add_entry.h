// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_node.h>

#include <string>

namespace Zantrel {

class FittingShapes;

/// As ParameterNode::AddListNode(false) and AddProfile(name, false), for who adds many: each shape is looked
/// at once. `list` has content, and its node is a list, or a profile list. Throw std::bad_alloc, and then no
/// entry was added.
ParameterNode AddItem(ParameterNode const& list, FittingShapes& fitting);
ParameterNode AddProfile(ParameterNode const& list, std::wstring const& name, FittingShapes& fitting);

} // namespace Zantrel
