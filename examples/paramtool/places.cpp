// SPDX-License-Identifier: Apache-2.0
//
// A database as a list of facts, each with its path, and the difference of two such lists.
//
// To look at: Walk::Kind, Index and Path; ParameterView::GetDefault and GetListNode, by which the same place
// is found in a database that holds only the layout's defaults.

#include "places.h"

#include "common/cursors.h"

#include <algorithm>
#include <iterator>

namespace Paramtool {

namespace {

using namespace Zantrel;
void AddMissing(std::vector<Fact> const& all, std::vector<Fact> const& present, bool isAdded,
                std::vector<Change>& changes) {
    std::vector<Fact> missing;
    std::set_difference(all.begin(), all.end(), present.begin(), present.end(), std::back_inserter(missing));
    for (Fact& fact : missing) {
        changes.push_back({std::move(fact), isAdded});
    }
}

} // namespace

Places::Places(ParameterDatabase const& database)
    : m_formatted(database.GetLayout()),
      m_walk(database.GetProfileEditor()), m_defaults{m_formatted.GetProfileEditor()} {}

bool Places::Next() {
    while (m_walk.Next()) {
        if (m_walk.Depth() == 0) {
            continue;
        }
        if (!Node().IsValid()) {
            m_walk.SkipContent(); // nothing is stored here
            continue;
        }
        m_defaults.resize(m_walk.Depth());
        m_defaults.push_back(DefaultsBelow(m_defaults.back()));
        return true;
    }
    return false;
}

// Entries that a new database lacks are measured against what a new one of them would hold: the default
// profile, or the template of a list's items.
ParameterView Places::DefaultsBelow(ParameterView const& above) const {
    if (!IsEntry()) {
        return above.Get(&m_walk.Layout());
    }
    bool const isItem = m_walk.Kind() == PlaceKind::Item && m_walk.Index() < above.GetSize();
    return isItem ? above.GetListNode(m_walk.Index()) : above.GetDefault();
}

bool Places::IsEntry() const {
    PlaceKind const kind = m_walk.Kind();
    return kind == PlaceKind::Item || kind == PlaceKind::Profile || kind == PlaceKind::DefaultProfile;
}

bool Places::IsAdded() const {
    ParameterView const& container = m_defaults[m_walk.Depth() - 1];
    return m_walk.Kind() == PlaceKind::Profile ||
           (m_walk.Kind() == PlaceKind::Item && m_walk.Index() >= container.GetSize());
}

std::wstring Places::Title() const {
    std::wstring const name(m_walk.Name());
    switch (m_walk.Kind()) {
    case PlaceKind::Item:
        return L'[' + std::to_wstring(m_walk.Index()) + L']';
    case PlaceKind::DefaultProfile:
        return L"[default]";
    case PlaceKind::Profile:
        return L'[' + name + L']';
    default:
        return name;
    }
}

std::wstring Places::TextOf(ParameterView const& node) {
    std::wstring const value = Host::ValueText(node);
    std::wstring const flags = Host::FlagsText(node);
    return (value.empty() ? L"" : L" = " + value) + (flags.empty() ? L"" : L" (" + flags + L')');
}

std::vector<Fact> FactsOf(ParameterDatabase const& database) {
    std::vector<Fact> facts;
    for (Places places(database); places.Next();) {
        std::wstring text = places.Text();
        if (places.IsEntry() || !text.empty()) { // an entry is a fact without any value, too
            facts.push_back({places.Path(), std::move(text)});
        }
    }
    return facts;
}

std::vector<Change> Differences(std::vector<Fact> earlier, std::vector<Fact> later) {
    std::sort(earlier.begin(), earlier.end());
    std::sort(later.begin(), later.end());
    std::vector<Change> changes;
    AddMissing(earlier, later, false, changes);
    AddMissing(later, earlier, true, changes);
    // Stable, so that of one path what is gone stays in front of what has come.
    std::stable_sort(changes.begin(), changes.end(), [](Change const& left, Change const& right) {
        return left.fact.path < right.fact.path;
    });
    return changes;
}

} // namespace Paramtool
