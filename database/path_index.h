// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/content_list.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

namespace Zantrel {

/// Finds nodes of a set by the hash of their path. It may miss one, but what it finds has that path; so where
/// it finds nothing the set is asked. Good as long as each of the nodes is in the set. Only reads once made.
class PathIndex {
public:
    using Place = ContentList::Nodes::const_iterator;

    /// Gathers nodes while a set is filled, when their paths have just been written.
    class Maker {
    public:
        void Add(Place node) { m_nodes.push_back({HashOf(node->m_path), node}); }
        PathIndex Make() const { return PathIndex(m_nodes); }

    private:
        friend class PathIndex;
        struct HashedNode {
            std::uint64_t hash;
            Place node;
        };
        std::deque<HashedNode> m_nodes; ///< grows without moving what it has
    };

    /// Null where it finds none.
    Place const* Find(std::wstring_view path) const noexcept;

private:
    explicit PathIndex(std::deque<Maker::HashedNode> const& nodes);
    static std::uint64_t HashOf(std::wstring_view path) noexcept;
    /// Where the steps of a hash begin.
    std::size_t FirstOf(std::uint64_t hash) const noexcept;

    std::size_t m_size = 0; ///< without the places behind the last at which steps can begin
    std::vector<std::uint8_t> m_marks;
    std::vector<Place> m_places;
};

} // namespace Zantrel
