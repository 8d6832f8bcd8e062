// SPDX-License-Identifier: Apache-2.0
#include <zantrel/store/property_filter.h>

#include "store/bag_access.h"

IPersistentPropertyFilter::~IPersistentPropertyFilter() = default;

void PersistentPropertyFilter::FilterProperties(PersistentProperties& bag,
                                                std::shared_ptr<IPersistentPropertyFilter>& filter) {
    if (auto const kept = filter) { // the filter may let go of the caller's pointer
        std::wstring name;          // kept for its room
        Zantrel::BagAccess::RemoveWhere(bag, [&](Zantrel::NamedProperty const& entry) {
            name = entry.name;
            return !kept->Filter(name, entry.property);
        });
    }
}
