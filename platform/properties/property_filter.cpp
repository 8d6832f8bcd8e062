// SPDX-License-Identifier: Apache-2.0
#include <zantrel/platform/property_filter.h>

#include <zantrel/platform/persistent_properties.h>

IPersistentPropertyFilter::~IPersistentPropertyFilter() = default;

void PersistentPropertyFilter::FilterProperties(PersistentProperties& bag,
                                                std::shared_ptr<IPersistentPropertyFilter>& filter) {
    if (filter != nullptr) {
        bag._Entries().RemoveWhere([&filter](Zantrel::NamedProperty const& entry) {
            return !filter->Filter(std::wstring(entry.name), entry.property);
        });
    }
}
