// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/parameter_layout.h>
#include <zantrel/store/external_properties.h>
#include <zantrel/store/property_filter.h>

#include <map>
#include <memory>
#include <set>
#include <string>

namespace Zantrel {

/// The live value of the property that says what a store describes, or null.
std::wstring const* FindObjectType(KelAM::ExternalProperties const& store);

/// Applies to each store the filter of its object type. What the layout says of a type is collected once for
/// all stores.
class StoreFilter {
public:
    explicit StoreFilter(ParameterLayout const* layout) : m_layout(layout) {}
    void operator()(KelAM::ExternalProperties& store);

private:
    struct Filter {
        std::set<std::wstring> names;
        std::shared_ptr<IPersistentPropertyFilter> filter;
    };

    std::shared_ptr<IPersistentPropertyFilter>& FilterOf(std::wstring const* objectType);

    ParameterLayout const* m_layout;
    std::map<void const*, Filter>
        m_filters; ///< by the rule of the object type; null is that of unknown types
};

} // namespace Zantrel
