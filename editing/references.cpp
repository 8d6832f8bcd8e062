// SPDX-License-Identifier: Apache-2.0
#include "editing/references.h"

#include "editing/entries.h"
#include "editing/findings.h"
#include "editing/profile_lists.h"
#include "editing/scope.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

// The values are given as pointers, so that a renaming can exchange them when nothing can fail any more. What
// is walked is cut down first by the layout: a branch in which no choice from the list stands is never gone
// into, however many entries it has.

namespace Zantrel::Editing {

namespace {

/// The choices from `list` and all nodes on the way to them.
std::unordered_set<LayoutNode const*> WaysToChoices(LayoutNode const& editor, LayoutNode const& list) {
    ProfileLists lists(&editor);
    std::unordered_set<LayoutNode const*> ways;
    std::vector<LayoutNode const*> open{&editor};
    while (!open.empty()) {
        LayoutNode const* const node = open.back();
        open.pop_back();
        if (node->m_type == OptionsFromProfiles && lists.ListOf(*node) == &list) {
            // A climb ends where an earlier one has been, so that each node is climbed through once.
            for (LayoutNode const* at = node; at != nullptr && ways.insert(at).second;) {
                at = at->GetOwner();
            }
        }
        std::copy(node->m_children.begin(), node->m_children.end(), std::back_inserter(open));
    }
    return ways;
}

/// The value of a choice, if that means `list`.
std::wstring* ValueIfOf(Place const& list, Place const& choice) {
    // A list within profiles stands there once in each; which one a choice means is told by the bag.
    bool const isChoice = choice.IsLeaf() && choice.GetLayoutNode()->m_type == OptionsFromProfiles;
    if (!isChoice ||
        Scope::Find(choice, *list.GetLayoutNode()).m_pProperties != list.GetCursor().m_pProperties) {
        return nullptr;
    }
    auto* const property =
        PropertyCast<std::wstring>(choice.GetCursor().m_pProperties->FindProperty(L"Value"));
    return property != nullptr && !property->IsDeleted() ? &property->m_value : nullptr;
}

void AddTemplate(Place const& list, std::vector<Place>& tops) {
    ParameterNode const model = list.GetCursor().GetDefault();
    if (model.IsValid()) {
        EntryPlace::SetBag(tops.emplace_back(EntryPlace::OfItem(list, 0)), *model.m_pProperties);
    }
}

} // namespace

References ReferencesTo(Place const& list, std::wstring_view name, PersistentProperties const* without) {
    References references;
    std::vector<Place> tops{list.GetOuter(0)}; // and the templates found below, which no walk comes to
    auto const ways = WaysToChoices(*tops.front().GetLayoutNode(), *list.GetLayoutNode());
    std::wstring const& listName = list.GetLayoutNode()->m_name;
    // By index, since templates within templates add to the tops while these are gone through.
    for (std::size_t top = 0; top < (ways.empty() ? 0 : tops.size()); ++top) {
        for (PlaceWalk<ParameterNode> walk(tops[top]); walk.Next();) {
            Place const& place = walk.GetPlace();
            if (place.GetCursor().m_pProperties == without || ways.count(place.GetLayoutNode()) == 0) {
                walk.SkipContent();
                continue;
            }
            if (place.GetKind() == PlaceKind::List) {
                AddTemplate(place, tops);
            }
            std::wstring* const value = ValueIfOf(list, place);
            if (value == nullptr || *value != name) {
                continue;
            }
            references.values.push_back(value);
            if (top == 0) {
                references.findings.push_back(
                    MakeFinding(FindingKind::NoSuchProfile, place, *value, listName));
            }
        }
    }
    return references;
}

} // namespace Zantrel::Editing
