// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/store/property_filter.h>

#include <set>
#include <string>

/// Decides which properties of a store a build ticket keeps. Asked of one property at a time, by its name and
/// what it holds; it changes nothing and goes no deeper. A null property isn't kept.
class BuildTicketPropertyFilter : public IPersistentPropertyFilter {
public:
    /// `names` are those that the layout uses; null: any will do. They must outlive the filter.
    BuildTicketPropertyFilter(std::set<std::wstring> const* names, bool keepSubProperties)
        : m_names(names), m_keepSubProperties(keepSubProperties) {}

    bool Filter(std::wstring const& name, IPersistentProperty* property) override;

private:
    std::set<std::wstring> const* m_names;
    bool m_keepSubProperties;
};
