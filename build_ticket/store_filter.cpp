// SPDX-License-Identifier: Apache-2.0
#include "build_ticket/store_filter.h"

#include "build_ticket/property_filter.h"

#include <zantrel/store/property_names.h>
#include <zantrel/store/sub_properties.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace Zantrel {

namespace {

using Names = std::set<std::wstring>;

void AddNamesBelow(LayoutNode const* anchor, Names& names) {
    if (anchor != nullptr) {
        anchor->AddUsedPropertyNames(names);
    }
}

/// What the stores of an object type keep.
struct Rule {
    std::wstring_view objectType;
    void (*collectNames)(ParameterLayout const& layout, Names& names);
    bool keepsSubProperties;
};

Rule const Rules[] = {
    {KelAM::ObjectTypes::Text::Platform,
     [](ParameterLayout const& layout, Names& names) { AddNamesBelow(layout.m_platformConfigurator, names); },
     true},
    {KelAM::ObjectTypes::Text::PartInstance,
     [](ParameterLayout const& layout, Names& names) { AddNamesBelow(layout.m_partConfigurator, names); },
     true},
    {KelAM::ObjectTypes::Text::UniquePart,
     [](ParameterLayout const& layout, Names& names) { layout.GetUsedPropertyNames(names); }, false},
};

/// Null for a store of any other type and for one without: it keeps all but what the filter never keeps.
Rule const* FindRule(std::wstring const* objectType) {
    auto const* const rule = std::find_if(std::begin(Rules), std::end(Rules), [&](Rule const& candidate) {
        return objectType != nullptr && candidate.objectType == *objectType;
    });
    return rule != std::end(Rules) ? rule : nullptr;
}

} // namespace

std::wstring const* FindObjectType(KelAM::ExternalProperties const& store) {
    auto const* property =
        PropertyCast<std::wstring>(store.FindProperty(KelAM::PropertyNames::Text::ObjectType));
    return property != nullptr && !property->IsDeleted() ? &property->m_value : nullptr;
}

std::shared_ptr<IPersistentPropertyFilter>& StoreFilter::FilterOf(std::wstring const* objectType) {
    Rule const* const rule = FindRule(objectType);
    Filter& made = m_filters[rule];
    if (made.filter == nullptr) {
        bool const hasNames = rule != nullptr && m_layout != nullptr;
        if (hasNames) {
            rule->collectNames(*m_layout, made.names);
        }
        // Names of a layout restrict also where there are none, as without the node that would hold them.
        made.filter = std::make_shared<BuildTicketPropertyFilter>(
            hasNames ? &made.names : nullptr, rule == nullptr || rule->keepsSubProperties);
    }
    return made.filter;
}

/// The store comes first, so that a nested set which it doesn't keep isn't looked into. What is left of them
/// is found anew by name, since the filter has changed the bag, and by name means the first of several.
void StoreFilter::operator()(KelAM::ExternalProperties& store) {
    auto& filter = FilterOf(FindObjectType(store));
    PersistentPropertyFilter::FilterProperties(store, filter);

    std::vector<std::wstring> nested;
    for (auto const& [name, property] : store) {
        bool const isNew = nested.empty() || nested.back() != name; // once for all of one name
        if (isNew && PropertyCast<KelAM::SubProperties>(property) != nullptr) {
            nested.emplace_back(name);
        }
    }
    for (std::wstring const& name : nested) {
        // Sets below these are left alone.
        if (auto* set = store.GetValuePointer<KelAM::SubProperties>(name, false)) {
            PersistentPropertyFilter::FilterProperties(*set, filter);
        }
    }
}

} // namespace Zantrel
