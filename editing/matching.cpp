// SPDX-License-Identifier: Apache-2.0
#include "editing/matching.h"

#include "editing/place_kind.h"

#include <algorithm>
#include <utility>

// Trees are laid flat, so that a position stands for a node, what is known of one stands in a row of its own,
// and no depth of a layout takes stack. Everything here is linear: names are found by hash together with the
// position of the parent, and whether a spot is left out is what its parent is, which comes before it.

namespace Zantrel::Editing {

/// The positions of a name hang together in a chain, of which the next and the last are known: neither adding
/// nor taking goes along it.
bool NamedPositions::Add(std::size_t group, std::wstring_view name, std::size_t position) {
    auto const [at, isFirst] = m_chains.try_emplace({group, name}, Chain{position, position});
    if (!isFirst) {
        Chain& chain = at->second;
        m_behind[chain.last] = position;
        chain.next = chain.next == Nowhere ? position : chain.next;
        chain.last = position;
    }
    return isFirst;
}

std::size_t NamedPositions::Take(std::size_t group, std::wstring_view name) {
    auto const at = m_chains.find({group, name});
    if (at == m_chains.end()) {
        return Nowhere;
    }
    std::size_t const taken = at->second.next;
    auto const behind = m_behind.find(taken);
    at->second.next = behind != m_behind.end() ? behind->second : Nowhere;
    return taken;
}

std::vector<Spot> SpotsOf(LayoutNode const& top) {
    std::vector<Spot> spots;
    std::vector<std::pair<LayoutNode const*, std::size_t>> open{{&top, 0}};
    while (!open.empty()) {
        auto const [node, parent] = open.back();
        open.pop_back();
        std::size_t const position = spots.size();
        spots.push_back({node, parent, PlaceKind::Group});
        auto const mark = static_cast<std::ptrdiff_t>(open.size());
        for (LayoutNode const* const child : node->m_children) {
            open.emplace_back(child, position);
        }
        // The last one is taken first.
        std::reverse(open.begin() + mark, open.end());
    }
    return spots;
}

std::wstring PathOf(std::vector<Spot> const& spots, std::size_t spot, wchar_t separator) {
    std::vector<std::wstring_view> names;
    for (; spot != 0; spot = spots[spot].parent) {
        names.emplace_back(spots[spot].layout->m_name);
    }
    std::wstring path;
    for (std::size_t i = names.size(); i != 0; --i) {
        path.append(names[i - 1]).append(i == 1 ? 0 : 1, separator);
    }
    return path;
}

namespace {

// Nodes are matched from the top down, so that what stands around a node is settled before it. On either side
// a node is matched, alone, or left out; what stands below one that is left out is so, too.
class Matching {
public:
    Matching(std::vector<Spot> const& first, std::vector<Spot> const& second, MatchRules const& rules)
        : m_first(first), m_second(second), m_rules(rules), m_target(first.size(), Nowhere),
          m_source(second.size(), Nowhere), m_isOutFirst(first.size()), m_isOutSecond(second.size()) {}

    std::vector<SpotPair> Run() {
        if (m_first.empty() || m_second.empty()) {
            return {};
        }
        AddSecond();
        Join(0, 0);
        for (std::size_t spot = 1; spot < m_first.size(); ++spot) {
            std::size_t const parent = m_first[spot].parent;
            bool const isFirstOfName = m_names.Add(parent, m_first[spot].layout->m_name, spot);
            m_isOutFirst[spot] = m_isOutFirst[parent] || IsOpened(parent) || IsRepeated(isFirstOfName);
            if (!m_isOutFirst[spot]) {
                Join(spot, TargetOf(spot));
            }
        }
        return Pairs();
    }

private:
    bool IsRepeated(bool isFirstOfName) const { return !isFirstOfName && !m_rules.hasTurns; }

    bool IsAlike(std::size_t first, std::size_t second) const {
        PlaceKind const ofFirst = m_first[first].kind, ofSecond = m_second[second].kind;
        return ofFirst == ofSecond || (!IsContainer(ofFirst) && !IsContainer(ofSecond));
    }

    /// Whether what stands below a spot of the first is left to who goes into the pair: there it is matched
    /// once more, with what stands below an entry.
    bool IsOpened(std::size_t first) const {
        return m_target[first] != Nowhere && !IsAlike(first, m_target[first]);
    }

    /// What a renaming leads to is kept apart, so that no node gets there by its name alone.
    void AddSecond() {
        NamedPositions names;
        for (std::size_t spot = 1; spot < m_second.size(); ++spot) {
            auto const& [layout, parent, kind] = m_second[spot];
            m_isOutSecond[spot] =
                m_isOutSecond[parent] || IsRepeated(names.Add(parent, layout->m_name, spot));
            bool const isTaken = m_rules.renamed != nullptr && m_rules.renamed->taken.count(layout) != 0;
            if (isTaken) {
                m_renamed.emplace(layout, spot);
            } else if (!m_isOutSecond[spot]) {
                m_open.Add(parent, layout->m_name, spot);
            }
        }
    }

    std::size_t TargetOf(std::size_t spot) {
        LayoutNode const* const layout = m_first[spot].layout;
        if (m_rules.renamed != nullptr) {
            if (auto const to = m_rules.renamed->to.find(layout); to != m_rules.renamed->to.end()) {
                auto const found = m_renamed.find(to->second);
                return found != m_renamed.end() ? found->second : Nowhere;
            }
        }
        std::size_t const around = m_target[m_first[spot].parent];
        return around != Nowhere ? m_open.Take(around, layout->m_name) : Nowhere;
    }

    void Join(std::size_t first, std::size_t second) {
        bool const isApart = m_rules.containers == MatchRules::Containers::StandApart && second != Nowhere &&
                             !IsAlike(first, second);
        if (second != Nowhere && !isApart) {
            m_target[first] = second;
            m_source[second] = first;
        }
    }

    std::vector<SpotPair> Pairs();

    std::vector<Spot> const& m_first;
    std::vector<Spot> const& m_second;
    MatchRules const& m_rules;
    std::vector<std::size_t> m_target, m_source; ///< of the spots of the first, and of the second
    std::vector<bool> m_isOutFirst, m_isOutSecond;
    NamedPositions m_names; ///< of the first
    NamedPositions m_open;  ///< of the second
    std::unordered_map<LayoutNode const*, std::size_t> m_renamed;
};

/// A spot that is alone in the first tree goes behind the last one before it that isn't: that keeps it near
/// what it stood behind, at any depth, however far the others have moved, and needs no search.
std::vector<SpotPair> Matching::Pairs() {
    std::vector<std::vector<std::size_t>> alone(m_second.size()); // behind the spot of the second
    std::size_t behind = 0;
    for (std::size_t spot = 0; spot < m_first.size(); ++spot) {
        if (m_target[spot] != Nowhere) {
            behind = m_target[spot];
        } else if (!m_isOutFirst[spot]) {
            alone[behind].push_back(spot);
        }
    }
    std::vector<SpotPair> pairs;
    for (std::size_t spot = 0; spot < m_second.size(); ++spot) {
        std::size_t const source = m_source[spot], around = m_source[m_second[spot].parent];
        bool const isOpened = spot != 0 && around != Nowhere && source == Nowhere && IsOpened(around);
        m_isOutSecond[spot] = m_isOutSecond[spot] || m_isOutSecond[m_second[spot].parent] || isOpened;
        if (source != Nowhere || !m_isOutSecond[spot]) {
            pairs.push_back({source, spot, source == Nowhere && around != Nowhere});
        }
        for (std::size_t const single : alone[spot]) {
            pairs.push_back({single, Nowhere, m_target[m_first[single].parent] != Nowhere});
        }
    }
    return pairs;
}

} // namespace

std::vector<SpotPair> Match(std::vector<Spot> const& first, std::vector<Spot> const& second,
                            MatchRules const& rules) {
    return Matching(first, second, rules).Run();
}

} // namespace Zantrel::Editing
