// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_node.h>

namespace Zantrel {

/// A cursor whose value is read and written in place.
struct ValueCursor : ParameterNode {
    explicit ValueCursor(ParameterNode const& node) : ParameterNode(node) {}
    using ParameterNode::_FindReference;
    using ParameterNode::_GetReference;
};

} // namespace Zantrel
