// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <memory>
#include <string>

class IPersistentProperty;
class PersistentProperties;

/// Decides for one property whether it stays in its bag.
/// A host derives its own; it is asked on the thread that filters.
class ZANTREL_EXPORT IPersistentPropertyFilter {
public:
    IPersistentPropertyFilter() = default;
    IPersistentPropertyFilter(IPersistentPropertyFilter const&) = default;
    IPersistentPropertyFilter& operator=(IPersistentPropertyFilter const&) = default;
    virtual ~IPersistentPropertyFilter();

    /// True keeps the property, false drops it. Must not change the bag.
    /// Both are good during the call only, and `property` is never null. What it throws passes through; what
    /// was dropped before is gone.
    virtual bool Filter(std::wstring const& name, IPersistentProperty* property) = 0;
};

/// Lets a filter judge the properties of a bag.
struct ZANTREL_EXPORT PersistentPropertyFilter {
    /// Asks `filter` once for each property of `bag` itself, in order, and ends those that it drops. Doesn't
    /// go deeper. A null filter drops nothing.
    /// Those marked deleted are asked about, too. The filter lives until the call ends, also when it lets go
    /// of the caller's pointer.
    static void FilterProperties(PersistentProperties& bag,
                                 std::shared_ptr<IPersistentPropertyFilter>& filter);
};
