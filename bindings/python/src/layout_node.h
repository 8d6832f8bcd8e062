// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "handles.h"
#include "held.h"

#include <zantrel/layout/layout_node.h>

#include <cstdint>
#include <memory>
#include <utility>

namespace ZantrelPython {

// No node of a layout ends before the layout does: Python adds nodes and never takes one away.

using LayoutPointer = Held<LayoutHandle>;

/// A node of a layout, which it keeps alive.
class LayoutNodeOf {
public:
    LayoutNodeOf(std::shared_ptr<LayoutHandle> layout, Zantrel::LayoutNode const* node)
        : m_layout(std::move(layout)), m_node(node) {}

    Zantrel::LayoutNode const& Get() const { return *m_node; }
    Zantrel::LayoutNode& Change() const {
        static_cast<void>(m_layout->Change());
        return *const_cast<Zantrel::LayoutNode*>(m_node); // the layout itself was made to be changed
    }
    LayoutNodeOf Other(Zantrel::LayoutNode const* node) const { return {m_layout, node}; }
    std::shared_ptr<LayoutHandle> const& Layout() const { return m_layout; }
    bool operator==(LayoutNodeOf const& other) const { return m_node == other.m_node; }

private:
    std::shared_ptr<LayoutHandle> m_layout;
    Zantrel::LayoutNode const* m_node;
};

/// A new child, of which no other may ever be one: what Python holds of a layout stays. RecursionError in the
/// depth.
LayoutNodeOf AddNode(LayoutNodeOf const& node, Text const& name, std::int32_t type,
                     py::object const& defaultValue);

} // namespace ZantrelPython
