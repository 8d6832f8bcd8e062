// SPDX-License-Identifier: Apache-2.0
#include <zantrel/database/parameter_view.h>

#include "database/find_bag.h"

#include <zantrel/layout/layout_node.h>

// A ParameterNode that is asked for the items of a list makes the sequence that is missing. A view adds
// nothing, and so answers as an empty sequence would.

namespace Zantrel {

namespace {

/// Whether asking the cursor itself for an item would make the sequence first.
bool LacksItems(ParameterNode const& cursor) {
    return cursor.IsValid() && cursor.m_pNode != nullptr && cursor.m_pNode->m_isList &&
           FindItems(*cursor.m_pProperties) == nullptr;
}

} // namespace

ParameterView ParameterView::GetListNode(unsigned long long index) const {
    if (LacksItems(m_node)) {
        ItemSequence().GetProperty(static_cast<std::int32_t>(index)); // throws
    }
    return m_node.GetListNode(index);
}

unsigned long long ParameterView::GetSize() const {
    return IsContainer() && LacksItems(m_node) ? 0 : m_node.GetSize();
}

} // namespace Zantrel
