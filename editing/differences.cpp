// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/differences.h>

#include "editing/compared_value.h"
#include "editing/paired_places.h"
#include "editing/place_flags.h"
#include "editing/value_conversion.h"

// Two databases are gone through as pairs of places (see paired_places.h): which nodes belong together is
// settled once for a pair of nodes, and entries are matched by name or turn each time they come.

namespace Zantrel::Editing {

namespace {

using Pair = EntryPair<ParameterView>;
using Views = Region<ParameterView>;

/// The entries that only the second has stand where the second has them, those of the first behind the entry
/// that they stood behind.
std::vector<Pair> MatchedEntries(std::vector<Entry<ParameterView>>& first,
                                 std::vector<Entry<ParameterView>>& second) {
    auto const groupOf = [](Entry<ParameterView> const& entry) {
        return static_cast<std::size_t>(entry.kind);
    };
    // Items and the default profile have no name; kind and turn match them. Names are found by hash, and the
    // alone ones wait at the position they go before, so that nothing is searched for.
    NamedPositions names;
    for (std::size_t i = 0; i < second.size(); ++i) {
        names.Add(groupOf(second[i]), second[i].name, i);
    }
    std::vector<std::size_t> sources(second.size(), Nowhere);
    std::vector<std::vector<std::size_t>> alone(second.size() + 1); // before the entry of the second
    std::size_t before = 0;
    for (std::size_t i = 0; i < first.size(); ++i) {
        std::size_t const target = names.Take(groupOf(first[i]), first[i].name);
        if (target != Nowhere) {
            sources[target] = i;
            before = target + 1;
        } else {
            alone[before].push_back(i);
        }
    }
    std::vector<Pair> pairs;
    for (std::size_t i = 0; i <= second.size(); ++i) {
        for (std::size_t const single : alone[i]) {
            pairs.push_back(
                {first[single].cursor, {}, first[single].kind, std::move(first[single].path), {}});
        }
        if (i == second.size()) {
            break;
        }
        bool const isBoth = sources[i] != Nowhere;
        pairs.push_back({isBoth ? first[sources[i]].cursor : ParameterView(), second[i].cursor,
                         second[i].kind, isBoth ? std::move(first[sources[i]].path) : std::wstring(),
                         std::move(second[i].path)});
    }
    return pairs;
}

// What is alone is told once, at its top: pairs below it are passed over, and so is all below a place that
// has content on one side only.
class Comparison {
public:
    bool OnEntry(Pair const& pair) {
        bool const isBoth = pair.first.IsValid() && pair.second.IsValid();
        if (!isBoth) {
            AddAlone(pair.first, pair.firstPath, pair.second, pair.secondPath);
        }
        return isBoth;
    }

    void OnPair(Views const& first, Views const& second, SpotPair pair, std::vector<Pair>& entries) {
        bool const isAlone = pair.first == Nowhere || pair.second == Nowhere;
        ParameterView const ofFirst = pair.first != Nowhere ? first.At(pair.first) : ParameterView();
        ParameterView const ofSecond = pair.second != Nowhere ? second.At(pair.second) : ParameterView();
        if (isAlone || !ofFirst.IsValid() || !ofSecond.IsValid()) {
            // A node that both layouts have may lack content in one database: that is told where what is
            // around it has content in both, as otherwise it was told further up.
            if (isAlone ? pair.isTop : first.IsReached(pair.first) && second.IsReached(pair.second)) {
                AddAlone(ofFirst, ofFirst.IsValid() ? first.Path(pair.first) : std::wstring(), ofSecond,
                         ofSecond.IsValid() ? second.Path(pair.second) : std::wstring());
            }
            return;
        }
        Compare(ofFirst, ofSecond, [&] { return second.Path(pair.second); });
        if (IsContainer(second.Kind(pair.second))) {
            auto ofThat = EntriesOf(ofFirst, first.Path(pair.first));
            auto ofThis = EntriesOf(ofSecond, second.Path(pair.second));
            entries = MatchedEntries(ofThat, ofThis);
        }
    }

    std::vector<Difference> m_differences;

private:
    /// Nothing where neither is there.
    void AddAlone(ParameterView const& first, std::wstring const& firstPath, ParameterView const& second,
                  std::wstring const& secondPath) {
        if (first.IsValid()) {
            m_differences.push_back(
                {Difference::Kind::Removed, firstPath, {}, ShownText(first), {}, first, {}});
        }
        if (second.IsValid()) {
            m_differences.push_back(
                {Difference::Kind::Added, secondPath, {}, {}, ShownText(second), {}, second});
        }
    }

    template <class PathOfPlace>
    void Compare(ParameterView const& first, ParameterView const& second, PathOfPlace const& path) {
        if (!IsSameValue(first, second)) {
            m_differences.push_back(
                {Difference::Kind::Value, path(), {}, ShownText(first), ShownText(second), first, second});
        }
        for (PlaceFlag const& flag : PlaceFlags) {
            bool const before = IsSet(first, flag), after = IsSet(second, flag);
            if (before != after) {
                m_differences.push_back({Difference::Kind::Flag, path(), std::wstring(flag.word),
                                         TextOf(before), TextOf(after), first, second});
            }
        }
    }
};

} // namespace

std::vector<Difference> Differences(ParameterDatabase const& first, ParameterDatabase const& second) {
    MatchRules const rules{MatchRules::Containers::StandApart, false, nullptr};
    Comparison comparison;
    PairedWalk<ParameterView, Comparison>(comparison, rules)
        .Run({first.GetProfileEditor(), second.GetProfileEditor(), PlaceKind::Group, {}, {}});
    return std::move(comparison.m_differences);
}

} // namespace Zantrel::Editing
