// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/walk.h>
#include <zantrel/layout/layout_node.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// Which nodes of two trees belong together.
namespace Zantrel::Editing {

inline constexpr std::size_t Nowhere = static_cast<std::size_t>(-1);

/// Two things as a key, also one and a number.
template <class First, class Second> struct PairHash {
    std::size_t operator()(std::pair<First, Second> const& key) const noexcept {
        return std::hash<First>()(key.first) * 31 + std::hash<Second>()(key.second);
    }
};

/// Positions by name, within groups. Several of one name are kept in the order in which they were added.
class NamedPositions {
public:
    /// Whether it is the first of its name.
    bool Add(std::size_t group, std::wstring_view name, std::size_t position);
    /// The next position of that name that wasn't taken before, or Nowhere.
    std::size_t Take(std::size_t group, std::wstring_view name);

private:
    using Key = std::pair<std::size_t, std::wstring_view>;
    struct Chain {
        std::size_t next, last;
    };
    std::unordered_map<Key, Chain, PairHash<std::size_t, std::wstring_view>> m_chains;
    std::unordered_map<std::size_t, std::size_t> m_behind; ///< of those that aren't the last of their name
};

/// One node of a tree that is laid flat: each stands behind its parent, siblings in order, the top first.
struct Spot {
    LayoutNode const* layout;
    std::size_t parent; ///< its position; of the top 0
    PlaceKind kind;     ///< what databases have there
};

/// All nodes of a tree.
std::vector<Spot> SpotsOf(LayoutNode const& top);
/// The names from below the top to a spot.
std::wstring PathOf(std::vector<Spot> const& spots, std::size_t spot, wchar_t separator);

/// What belongs together, or stands alone.
struct SpotPair {
    std::size_t first = Nowhere;
    std::size_t second = Nowhere;
    bool isTop = false; ///< where one stands alone: the one around it doesn't
};

/// Where nodes stand that have another path now. No node is named twice on either side.
struct Renamed {
    std::unordered_map<LayoutNode const*, LayoutNode const*> to;
    std::unordered_set<LayoutNode const*> taken; ///< what `to` leads to
};

struct MatchRules {
    enum class Containers {
        AreNodes,   ///< like any other
        StandApart, ///< they match their like only
        Open        ///< they match also plain nodes; what stands below these is then left out
    };
    Containers containers = Containers::AreNodes;
    /// Whether a further node of a name matches the further one there. Otherwise it is left out with all
    /// below it: in a database it has no content of its own.
    bool hasTurns = true;
    Renamed const* renamed = nullptr;
};

/// Matches by names below what is matched, the tops with each other. The pairs come in the order of the
/// second tree, with what only the first has behind what it stood behind.
std::vector<SpotPair> Match(std::vector<Spot> const& first, std::vector<Spot> const& second,
                            MatchRules const& rules);

} // namespace Zantrel::Editing
