// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/finding.h>
#include <zantrel/editing/place.h>

#include <string>
#include <string_view>
#include <vector>

namespace Zantrel::Editing {

/// The choices of a database that name a profile of a list.
struct References {
    std::vector<std::wstring*> values; ///< borrowed: the value of each, in place
    /// Of each that there is no such profile; but not of those in a list's template, where no path leads.
    std::vector<Finding> findings;
};

/// All choices in the database of `list` that mean this very list and have that name as their value, in the
/// order of a walk; what stands below `without` aside. Looks only where choices from the list can stand.
References ReferencesTo(Place const& list, std::wstring_view name, PersistentProperties const* without);

} // namespace Zantrel::Editing
