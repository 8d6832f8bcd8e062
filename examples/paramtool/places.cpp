// SPDX-License-Identifier: Apache-2.0
#include "places.h"

#include "common/cursors.h"

#include <algorithm>
#include <iterator>

namespace Paramtool {

namespace {

using namespace Zantrel;
using Visit = std::function<void(Place const&)>;

void Walk(Place const& place, Visit const& visit);

void WalkChildren(Place const& place, Visit const& visit, std::size_t depth) {
    LayoutNode const& layout = *place.node.m_pNode;
    std::wstring const lead = place.path.empty() ? L"" : place.path + L'_';
    for (std::size_t i = 0; i < layout.Size(); ++i) {
        LayoutNode const& child = layout.At(i);
        Walk({place.node.Get(&child), place.defaults.Get(&child), lead + child.m_name, child.m_name, depth},
             visit);
    }
}

/// From the bags and not by name: of two profiles of one name, lookups would give the first twice.
void WalkProfiles(Place const& list, Visit const& visit) {
    std::wstring const lead = list.path + L'_' + list.node.m_pNode->m_nodeName;
    std::size_t const depth = list.depth + 1;
    ParameterNode const defaults = list.defaults.GetDefault();
    Walk({list.node.GetDefault(), defaults, lead + L"::Default::", L"[default]", depth, true}, visit);
    for (auto const& [name, property] : *list.node.m_pProperties) {
        auto* bag = PropertyCast<PersistentProperties>(property);
        if (bag != nullptr && name != L"::DefaultProfile::") {
            ParameterNode profile = list.node;
            profile.m_pProperties = &bag->m_value;
            profile.m_isContainer = false;
            std::wstring const title = L'[' + std::wstring(name) + L']';
            Walk({profile, defaults, lead + title, title, depth, true, true}, visit);
        }
    }
}

void WalkItems(Place const& list, Visit const& visit) {
    std::wstring const lead = list.path + L'_' + list.node.m_pNode->m_nodeName;
    for (unsigned long long i = 0; i < list.node.GetSize(); ++i) {
        bool const isAdded = i >= list.defaults.GetSize();
        ParameterNode const defaults = isAdded ? list.defaults.GetDefault() : list.defaults.GetListNode(i);
        std::wstring const title = L'[' + std::to_wstring(i) + L']';
        Walk({list.node.GetListNode(i), defaults, lead + title, title, list.depth + 1, true, isAdded}, visit);
    }
}

void Walk(Place const& place, Visit const& visit) {
    if (!place.node.IsValid()) {
        return; // nothing is stored here
    }
    visit(place);
    if (!place.node.m_isContainer) {
        WalkChildren(place, visit, place.depth + 1);
    } else if (place.node.m_pNode->m_isProfileList) {
        WalkProfiles(place, visit);
    } else {
        WalkItems(place, visit);
    }
}

void AddMissing(std::vector<Fact> const& all, std::vector<Fact> const& present, bool isAdded,
                std::vector<Change>& changes) {
    std::vector<Fact> missing;
    std::set_difference(all.begin(), all.end(), present.begin(), present.end(), std::back_inserter(missing));
    for (Fact& fact : missing) {
        changes.push_back({std::move(fact), isAdded});
    }
}

} // namespace

std::wstring Place::TextOf(ParameterNode const& node) {
    std::wstring const value = Host::ValueText(node);
    std::wstring const flags = Host::FlagsText(node);
    return (value.empty() ? L"" : L" = " + value) + (flags.empty() ? L"" : L" (" + flags + L')');
}

void ForEachPlace(ParameterDatabase& database, Visit const& visit) {
    ParameterDatabase defaults(database.GetLayout());
    WalkChildren({database.GetProfileEditor(), defaults.GetProfileEditor(), L"", L""}, visit, 0);
}

std::vector<Fact> FactsOf(ParameterDatabase& database) {
    std::vector<Fact> facts;
    ForEachPlace(database, [&](Place const& place) {
        std::wstring text = place.Text();
        if (place.isEntry || !text.empty()) { // an entry is a fact without any value, too
            facts.push_back({place.path, std::move(text)});
        }
    });
    return facts;
}

std::vector<Change> Differences(std::vector<Fact> earlier, std::vector<Fact> later) {
    std::sort(earlier.begin(), earlier.end());
    std::sort(later.begin(), later.end());
    std::vector<Change> changes;
    AddMissing(earlier, later, false, changes);
    AddMissing(later, earlier, true, changes);
    std::stable_sort(changes.begin(), changes.end(), [](Change const& left, Change const& right) {
        return left.fact.path < right.fact.path;
    });
    return changes;
}

} // namespace Paramtool
