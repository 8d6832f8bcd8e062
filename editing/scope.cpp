// SPDX-License-Identifier: Apache-2.0
#include "editing/scope.h"

#include <iterator>
#include <vector>

// A place and a node share the upper part of their ways. As far as they do, the place's own steps are taken,
// with the items and profiles that it stands in; from where they part, the node's way is gone by cursors, and
// what is entered on it is a container from outside.

namespace Zantrel::Editing {

namespace {

/// The entry of a container that counts for who isn't in it; a cursor that isn't valid where none does.
ParameterView EntryFromOutside(ParameterView const& container) {
    return container.GetLayoutNode()->m_isProfileList ? container.GetDefault() : ParameterView();
}
ParameterNode EntryFromOutside(ParameterNode const& container) {
    return container.m_pNode->m_isProfileList ? container.GetDefault() : ParameterNode();
}

bool IsContainer(ParameterNode const& cursor) { return cursor.m_isContainer; }
bool IsContainer(ParameterView const& cursor) { return cursor.IsContainer(); }

/// The nodes from `node` up to just below `top`; empty when they don't lead there.
std::vector<LayoutNode const*> NodesBetween(LayoutNode const& top, LayoutNode const& node) {
    std::vector<LayoutNode const*> nodes;
    nodes.reserve(16); // as deep as most layouts are
    for (LayoutNode const* at = &node; at != &top; at = at->GetOwner()) {
        if (at == nullptr) {
            return {};
        }
        nodes.push_back(at);
    }
    return nodes;
}

} // namespace

template <class Cursor>
Cursor Scope::Find(BasicPlace<Cursor> const& from, std::size_t depth, LayoutNode const& node) {
    LayoutNode const* const editor = from.m_steps.front().layout;
    if (editor == nullptr) {
        return {};
    }
    std::vector<LayoutNode const*> const nodes = NodesBetween(*editor, node);
    // As far as `from` stands on the way, each container together with the entry that `from` is in.
    auto next = nodes.rbegin();
    std::size_t step = 0;
    auto const stands = [&](LayoutNode const* layout) {
        return step < depth && from.m_steps[step + 1].layout == layout;
    };
    while (next != nodes.rend() && stands(*next)) {
        ++step;
        // An entry has the node of its container, and so stands behind it under the same one. What is looked
        // for may be the container itself: then its entry is none of the way.
        if (std::next(next) != nodes.rend() && stands(*next)) {
            ++step; // the entry
        }
        ++next;
    }
    Cursor cursor = from.m_steps[step].cursor;
    for (; next != nodes.rend() && cursor.IsValid(); ++next) {
        if (IsContainer(cursor)) {
            cursor = EntryFromOutside(cursor);
        }
        if (cursor.IsValid()) {
            cursor = cursor.Get(*next);
        }
    }
    // The editor itself, and what doesn't stand in it, is nobody's source.
    return nodes.empty() ? Cursor() : cursor;
}

template ParameterNode Scope::Find(Place const& from, std::size_t depth, LayoutNode const& node);
template ParameterView Scope::Find(PlaceView const& from, std::size_t depth, LayoutNode const& node);

} // namespace Zantrel::Editing
