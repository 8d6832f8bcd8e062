// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "text/utf16_order.h"

#include <zantrel/database/content_list.h>
#include <zantrel/database/walk.h>

#include <cstddef>
#include <deque>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace Zantrel {

/// Goes along with a walk and knows where in the order of paths its leaves belong, so that each can be
/// inserted with a hint. A wrong hint costs time only.
class PathOrder {
public:
    using Place = ContentList::Nodes::const_iterator;

    /// What is in the set already is taken to stand before all leaves.
    explicit PathOrder(ContentList::Nodes const& nodes);

    /// To be told of each place that the walk comes to.
    void ComeTo(Walk<ParameterNode> const& walk);
    /// What the leaf that was come to last belongs in front of.
    Place Hint() const;
    /// Where it stands.
    void Stand(Place leaf) { m_last = leaf; }

private:
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    /// Steps of siblings as they stand in paths, with their positions in the order of the walk.
    using Siblings = std::map<std::wstring, std::size_t, Text::Utf16Less>;

    /// The places directly below one that the walk came to so far.
    struct Level {
        LayoutNode const* layout;                ///< of the place above
        Place before;                            ///< the last leaf in front of all of them
        std::vector<Place> lasts;                ///< of each, the last leaf not behind it
        std::vector<std::size_t> const* smaller; ///< of children: see SmallerOf
        Siblings profiles;
        std::size_t neighbour; ///< of the place that the walk came to last: the one it stands behind, or None
        std::size_t greatest;  ///< of those before it, by their steps, or None
    };

    /// Adds a step, and gives the greatest of the others that is smaller.
    static std::size_t AddTo(Siblings& siblings, std::wstring step, std::size_t position);
    /// Of each child the greatest that is smaller and comes before it in the layout.
    std::vector<std::size_t> const& SmallerOf(LayoutNode const& parent);
    std::size_t NeighbourOf(Level& level, Walk<ParameterNode> const& walk);
    void Open();
    void Close();
    /// All below the place that was come to last is known.
    void Settle(Level& level);

    ContentList::Nodes const& m_nodes;
    std::deque<Level> m_levels; ///< m_depth of them are open, the others are kept for their memory
    std::size_t m_depth = 0;
    LayoutNode const* m_layout = nullptr; ///< of the place that was come to last
    Place m_last; ///< the last leaf that stands in front of what comes next; end() for none
    std::unordered_map<LayoutNode const*, std::vector<std::size_t>> m_smaller;
};

} // namespace Zantrel
