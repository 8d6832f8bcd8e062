// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_node.h>

#include <string>
#include <string_view>

namespace Zantrel {

/// The bag under the first entry of `name`, or null when that entry is missing, no bag or deleted.
inline PersistentProperties* FindBag(PersistentProperties& bag, std::wstring const& name) {
    auto* property = PropertyCast<PersistentProperties>(bag._Entries().FindBorrowed(name));
    return property != nullptr && !property->IsDeleted() ? &property->m_value : nullptr;
}

inline PersistentProperties* FindBag(PersistentProperties& bag, std::wstring_view name) {
    auto* property = PropertyCast<PersistentProperties>(bag._Entries().FindFirst(name));
    return property != nullptr && !property->IsDeleted() ? &property->m_value : nullptr;
}

/// The cursor's bag. Throws std::runtime_error when it has none.
PersistentProperties& RequireBag(ParameterNode const& cursor);

} // namespace Zantrel
