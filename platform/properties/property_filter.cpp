// SPDX-License-Identifier: Apache-2.0
#include <zantrel/platform/property_filter.h>

#include <zantrel/platform/persistent_properties.h>

IPersistentPropertyFilter::~IPersistentPropertyFilter() = default;

void PersistentPropertyFilter::FilterProperties(PersistentProperties& bag,
                                                std::shared_ptr<IPersistentPropertyFilter>& filter) {
    if (auto const kept = filter) { // the filter may let go of the caller's pointer
        bag._Entries().RemoveWhere([&kept](Zantrel::NamedProperty const& entry) {
            return !kept->Filter(std::wstring(entry.name), entry.property);
        });
    }
}
