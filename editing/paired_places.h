// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "editing/default_profile.h"
#include "editing/matching.h"
#include "editing/place_kind.h"

#include <zantrel/database/walk.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

/// Two databases side by side, place by place, also where their layouts differ.
///
/// A region is what one entry of a container holds, or the profile editor, as far as groups alone lead to it;
/// containers belong to it as wholes. All regions of one node of the layout have the same spots, so that
/// which spots of two regions belong together is found out once for a pair of nodes, not for each entry. What
/// remains for an entry is to go through the pairs.
namespace Zantrel::Editing {

inline std::wstring JoinPath(std::wstring const& path, std::wstring_view step) {
    std::wstring joined = path;
    joined.append(path.empty() || step.empty() ? L"" : L"_").append(step);
    return joined;
}

template <class Cursor> class Region {
public:
    Region(Cursor const& top, std::wstring path) : m_path(std::move(path)) {
        std::vector<std::size_t> around;
        for (Walk<Cursor> walk(top); walk.Next();) {
            around.resize(walk.Depth());
            m_spots.push_back({&walk.Layout(), around.empty() ? 0 : around.back(), walk.Kind()});
            m_cursors.push_back(walk.Node());
            around.push_back(m_spots.size() - 1);
            if (IsContainer(walk.Kind())) {
                walk.SkipContent();
            }
        }
    }

    std::vector<Spot> const& Spots() const noexcept { return m_spots; }
    Cursor const& At(std::size_t spot) const { return m_cursors[spot]; }
    /// Whether what is around it has content.
    bool IsReached(std::size_t spot) const { return m_cursors[m_spots[spot].parent].IsValid(); }
    LayoutNode const& Layout(std::size_t spot) const { return *m_spots[spot].layout; }
    PlaceKind Kind(std::size_t spot) const { return m_spots[spot].kind; }
    std::wstring Path(std::size_t spot) const { return JoinPath(m_path, PathOf(m_spots, spot, L'_')); }

private:
    std::wstring m_path; ///< of the top
    std::vector<Spot> m_spots;
    std::vector<Cursor> m_cursors;
};

/// An entry of a container. The template of a list counts as its default profile.
template <class Cursor> struct Entry {
    Cursor cursor;
    PlaceKind kind;
    std::wstring_view name; ///< of a profile
    std::wstring path;
};

/// The entries that have content: template or default profile first, then all others in order.
template <class Cursor>
std::vector<Entry<Cursor>> EntriesOf(Cursor const& container, std::wstring const& path) {
    std::vector<Entry<Cursor>> entries;
    for (Walk<Cursor> walk(container); walk.Next();) {
        if (walk.Depth() != 0) {
            walk.SkipContent();
            entries.push_back({walk.Node(), walk.Kind(), walk.Name(), JoinPath(path, walk.Path())});
        } else if (walk.Kind() == PlaceKind::List) {
            std::wstring const step = walk.Layout().m_nodeName + std::wstring(DefaultProfileStep);
            entries.push_back(
                {walk.Node().GetDefault(), PlaceKind::DefaultProfile, {}, JoinPath(path, step)});
        }
        if (!entries.empty() && !entries.back().cursor.IsValid()) {
            entries.pop_back();
        }
    }
    return entries;
}

/// Two entries that belong together, or one alone: then the other cursor isn't valid.
template <class Second> struct EntryPair {
    ParameterView first;
    Second second;
    PlaceKind kind; ///< the first's, or that of what stands alone
    std::wstring firstPath, secondPath;
    std::wstring_view note{}; ///< for the visitor
};

/// Goes through all pairs. The visitor has
///
///     bool OnEntry(EntryPair<Second>&)           whether the walk goes in: both are valid then
///     void OnPair(Region<ParameterView>&, Region<Second>&, SpotPair, std::vector<EntryPair<Second>>&
///     entries)
///
/// where OnPair leaves in `entries` what the walk then goes through before the next pair. No recursion.
template <class Second, class Visitor> class PairedWalk {
public:
    PairedWalk(Visitor& visitor, MatchRules const& rules) : m_visitor(visitor), m_rules(rules) {}

    void Run(EntryPair<Second> top) {
        Enter(top);
        while (!m_levels.empty()) {
            Level& level = m_levels.back();
            if (level.nextEntry < level.entries.size()) {
                Enter(level.entries[level.nextEntry++]); // may move the levels
            } else if (level.nextPair < level.pairs->size()) {
                level.entries.clear();
                level.nextEntry = 0;
                m_visitor.OnPair(level.first, level.second, (*level.pairs)[level.nextPair++], level.entries);
            } else {
                m_levels.pop_back();
            }
        }
    }

private:
    struct Level {
        Region<ParameterView> first;
        Region<Second> second;
        std::vector<SpotPair> const* pairs = nullptr;
        std::size_t nextPair = 0;
        std::vector<EntryPair<Second>> entries{};
        std::size_t nextEntry = 0;
    };
    using Nodes = std::pair<LayoutNode const*, LayoutNode const*>;

    /// `entry` may stand in a level, and is then bad when this is done.
    void Enter(EntryPair<Second>& entry) {
        if (!m_visitor.OnEntry(entry)) {
            return;
        }
        Level level{{entry.first, std::move(entry.firstPath)}, {entry.second, std::move(entry.secondPath)}};
        auto const [at, isNew] = m_pairs.try_emplace(Nodes(&level.first.Layout(0), &level.second.Layout(0)));
        if (isNew) {
            at->second = Match(level.first.Spots(), level.second.Spots(), m_rules);
        }
        level.pairs = &at->second;
        m_levels.push_back(std::move(level));
    }

    Visitor& m_visitor;
    MatchRules const& m_rules;
    std::unordered_map<Nodes, std::vector<SpotPair>, PairHash<LayoutNode const*, LayoutNode const*>> m_pairs;
    std::vector<Level> m_levels;
};

} // namespace Zantrel::Editing
