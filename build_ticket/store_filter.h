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

/// Applies to each store the filter of its object type.
///
/// A filter holds the names that the layout uses for a type, which takes a walk over the layout to find out:
/// it is made when the first store of the type comes, and serves all that follow. So the layout must stay as
/// it is, and time grows with the layout plus the stores and not with their product. A filter refers to the
/// names beside it, and both stay where they are while this object lives.
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
