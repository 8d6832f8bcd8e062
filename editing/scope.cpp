// SPDX-License-Identifier: Apache-2.0
#include "editing/scope.h"

#include <vector>

namespace Zantrel::Editing {

namespace {

/// The nodes from just below `top` down to `node`; empty when they don't lead there.
std::vector<LayoutNode const*> NodesBetween(LayoutNode const& top, LayoutNode const& node) {
    std::vector<LayoutNode const*> nodes;
    for (LayoutNode const* at = &node; at != &top; at = at->GetOwner()) {
        if (at == nullptr) {
            return {};
        }
        nodes.insert(nodes.begin(), at);
    }
    return nodes;
}

} // namespace

ParameterView Scope::Find(PlaceView const& from, LayoutNode const& node) {
    LayoutNode const* const editor = from.m_steps.front().layout;
    if (editor == nullptr) {
        return {};
    }
    std::vector<LayoutNode const*> const nodes = NodesBetween(*editor, node);
    // As far as `from` stands on the way, each container together with the entry that `from` is in.
    std::size_t shared = 0, step = 0;
    auto const stands = [&](LayoutNode const* layout) {
        return step + 1 < from.m_steps.size() && from.m_steps[step + 1].layout == layout;
    };
    while (shared < nodes.size() && stands(nodes[shared])) {
        ++step;
        ++shared;
        if (shared < nodes.size() && stands(nodes[shared - 1])) {
            ++step; // the entry
        }
    }
    ParameterView cursor = from.m_steps[step].cursor;
    for (; shared < nodes.size() && cursor.IsValid(); ++shared) {
        if (cursor.IsContainer()) {
            bool const isProfileList = cursor.GetLayoutNode()->m_isProfileList;
            cursor = isProfileList ? cursor.GetDefault() : ParameterView();
        }
        if (cursor.IsValid()) {
            cursor = cursor.Get(nodes[shared]);
        }
    }
    return nodes.empty() ? ParameterView() : cursor;
}

} // namespace Zantrel::Editing
