// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/choices.h>

#include "editing/default_profile.h"
#include "editing/profile_lists.h"
#include "editing/scope.h"

#include <cstddef>

namespace Zantrel::Editing {

namespace {

std::vector<Choice> OptionsOf(LayoutNode const& layout) {
    std::vector<Choice> choices;
    for (std::size_t i = 0; i != layout.m_optionValues.size(); ++i) {
        // A layout may give fewer names than options.
        bool const isNamed =
            i < layout.m_optionDisplayNames.size() && !layout.m_optionDisplayNames[i].empty();
        std::wstring const& value = layout.m_optionValues[i];
        choices.push_back({value, isNamed ? layout.m_optionDisplayNames[i] : value});
    }
    return choices;
}

/// The word for the default profile is one that no profile has as its name.
std::vector<Choice> ProfilesOf(ParameterView const& list) {
    std::vector<std::wstring> names;
    list.GetProfiles(names);
    std::wstring const shown(DefaultProfileWord);
    std::wstring const word(list.HasProfile(shown.c_str()) ? DefaultProfileName : DefaultProfileWord);
    std::vector<Choice> choices{{word, shown, true}};
    for (std::wstring& name : names) {
        if (choices.size() == 1 ||
            name != choices.back().value) { // of a name in use twice only the first counts
            choices.push_back({name, name});
        }
    }
    return choices;
}

} // namespace

std::vector<Choice> ChoicesOf(PlaceView const& place) {
    LayoutNode const* const layout = place.IsValid() && place.IsLeaf() ? place.GetLayoutNode() : nullptr;
    if (layout != nullptr && layout->m_type == eTypeLayoutNode::Options) {
        return OptionsOf(*layout);
    }
    if (layout == nullptr || layout->m_type != eTypeLayoutNode::OptionsFromProfiles) {
        return {};
    }
    LayoutNode const* const list = ProfileLists(place.GetOuter(0).GetLayoutNode()).ListOf(*layout);
    ParameterView const cursor = list != nullptr ? Scope::Find(place, *list) : ParameterView();
    return cursor.IsValid() ? ProfilesOf(cursor) : std::vector<Choice>();
}

} // namespace Zantrel::Editing
