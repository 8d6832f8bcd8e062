// SPDX-License-Identifier: Apache-2.0
#include "database/path_order.h"

#include <zantrel/layout/layout_node.h>

#include <iterator>
#include <utility>

// A walk comes to siblings in the order of the layout, and their leaves belong into the order of their steps.
// All leaves below one sibling stand together, so a new one belongs behind the last leaf of that neighbour
// among the siblings before it which has the greatest step that is smaller than its own; where there is none,
// behind the leaf that all of them stand behind. Which neighbour that is, is settled by the layout for
// children, by the digits for items, and by the names for profiles. (Steps that hold "_" can break the rule,
// and two places on one path; then a hint is wrong.)
//
// m_last is the last leaf of what has been passed, up to the place that the walk came to last, in the order
// of paths: a level hands it on to the one above when it closes.

namespace Zantrel {

namespace {

/// The step of an item ends with "]", which is greater than all digits: [10] to [19] stand in front of [1].
std::size_t ItemBefore(std::size_t index) {
    while (index % 10 == 0) {
        index /= 10;
    }
    return index - 1;
}

} // namespace

PathOrder::PathOrder(ContentList::Nodes const& nodes)
    : m_nodes(nodes), m_last(nodes.empty() ? nodes.end() : std::prev(nodes.end())) {}

PathOrder::Place PathOrder::Hint() const {
    return m_last == m_nodes.end() ? m_nodes.begin() : std::next(m_last);
}

void PathOrder::ComeTo(Walk<ParameterNode> const& walk) {
    while (m_depth > walk.Depth()) {
        Close();
    }
    if (m_depth < walk.Depth()) {
        Open();
    } else if (m_depth != 0) {
        Settle(m_levels[m_depth - 1]);
    }
    if (m_depth != 0) {
        Level& level = m_levels[m_depth - 1];
        level.neighbour = NeighbourOf(level, walk);
        m_last = level.neighbour == None ? level.before : level.lasts[level.neighbour];
    }
    m_layout = &walk.Layout();
}

void PathOrder::Open() {
    if (m_levels.size() == m_depth) {
        m_levels.emplace_back();
    }
    Level& level = m_levels[m_depth];
    ++m_depth;
    level.layout = m_layout;
    level.before = m_last;
    level.lasts.clear();
    level.smaller = nullptr;
    level.profiles.clear();
    level.greatest = None;
}

void PathOrder::Settle(Level& level) {
    if (level.neighbour == level.greatest) {
        level.greatest = level.lasts.size();
    }
    level.lasts.push_back(m_last);
}

void PathOrder::Close() {
    Level& level = m_levels[m_depth - 1];
    Settle(level);
    m_last = level.lasts[level.greatest];
    --m_depth;
}

std::size_t PathOrder::NeighbourOf(Level& level, Walk<ParameterNode> const& walk) {
    switch (walk.Kind()) {
    case PlaceKind::Item:
        return walk.Index() == 0 ? None : ItemBefore(walk.Index());
    case PlaceKind::DefaultProfile:
        return None;
    case PlaceKind::Profile: {
        std::size_t const smaller =
            AddTo(level.profiles, std::wstring(walk.Name()).append(L"]"), level.lasts.size());
        return smaller == None ? 0 : smaller; // the default profile, which comes first
    }
    default:
        if (level.smaller == nullptr) {
            level.smaller = &SmallerOf(*level.layout);
        }
        return (*level.smaller)[walk.Index()];
    }
}

std::size_t PathOrder::AddTo(Siblings& siblings, std::wstring step, std::size_t position) {
    auto const at = siblings.emplace(std::move(step), position).first;
    return at == siblings.begin() ? None : std::prev(at)->second;
}

std::vector<std::size_t> const& PathOrder::SmallerOf(LayoutNode const& parent) {
    auto const [known, isNew] = m_smaller.try_emplace(&parent);
    if (isNew) {
        Siblings siblings;
        for (std::size_t index = 0; index < parent.Size(); ++index) {
            LayoutNode const& child = parent.At(index);
            bool const isLeaf = child.Size() == 0 && !child.m_isList && !child.m_isProfileList;
            known->second.push_back(AddTo(siblings, child.m_name + (isLeaf ? L"" : L"_"), index));
        }
    }
    return known->second;
}

} // namespace Zantrel
