// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <memory>
#include <string>

class IPersistentProperty;
class PersistentProperties;

/// Decides for one property whether it stays in its bag.
class ZANTREL_EXPORT IPersistentPropertyFilter {
public:
    IPersistentPropertyFilter() = default;
    IPersistentPropertyFilter(IPersistentPropertyFilter const&) = default;
    IPersistentPropertyFilter& operator=(IPersistentPropertyFilter const&) = default;
    virtual ~IPersistentPropertyFilter();

    /// True keeps the property, false drops it. Must not change the bag.
    virtual bool Filter(std::wstring const& name, IPersistentProperty* property) = 0;
};

struct ZANTREL_EXPORT PersistentPropertyFilter {
    /// Asks `filter` once for each property of `bag` itself, in order, and ends those that it drops. Doesn't
    /// go deeper. A null filter drops nothing.
    static void FilterProperties(PersistentProperties& bag,
                                 std::shared_ptr<IPersistentPropertyFilter>& filter);
};
