// SPDX-License-Identifier: Apache-2.0
#include <zantrel/store/property_filter.h>

#include <zantrel/store/persistent_properties.h>

IPersistentPropertyFilter::~IPersistentPropertyFilter() = default;

void PersistentPropertyFilter::FilterProperties(PersistentProperties& bag,
                                                std::shared_ptr<IPersistentPropertyFilter>& filter) {
    if (auto const kept = filter) { // the filter may let go of the caller's pointer
        std::wstring name;          // kept for its room
        bag._Entries().RemoveWhere([&](Zantrel::NamedProperty const& entry) {
            name = entry.name;
            return !kept->Filter(name, entry.property);
        });
    }
}
