// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/bag_access.h"
#include "store/reserved_names.h"

#include <zantrel/database/parameter_node.h>
#include <zantrel/layout/layout_node.h>

#include <string>
#include <string_view>

// Every look into a bag that cursors and walks take.

namespace Zantrel {

using ItemSequence = IndexedProperties<PersistentProperties>;

/// The bag that a property holds, or null when there is none or it is marked deleted.
inline PersistentProperties* LiveBag(IPersistentProperty* entry) {
    auto* property = PropertyCast<PersistentProperties>(entry);
    return property != nullptr && !property->IsDeleted() ? &property->m_value : nullptr;
}

/// The bag in a slot of one that has a shape, or null when it is marked deleted.
inline PersistentProperties* LiveBagAt(PersistentProperties& bag, std::size_t slot) {
    PersistentProperty<PersistentProperties>& property = BagAccess::BagAt(bag, slot);
    return property.m_deleted ? nullptr : &property.m_value;
}

/// The bag under the first entry of `name`, or null when that entry is missing, no bag or deleted.
inline PersistentProperties* FindBag(PersistentProperties& bag, std::wstring const& name) {
    return LiveBag(BagAccess::Find(bag, name));
}

inline PersistentProperties* FindBag(PersistentProperties& bag, std::wstring_view name) {
    return LiveBag(bag.FindProperty(name));
}

/// The items in the bag of a list, or null. Takes away the mark of deletion, which nobody asks for here.
inline ItemSequence* FindItems(PersistentProperties& bag) {
    auto* property = PropertyCast<ItemSequence>(BagAccess::Find(bag, Reserved().value));
    if (property == nullptr) {
        return nullptr;
    }
    property->SetDeleted(false);
    return &property->m_value;
}

/// The cursor on a child of a group, whose bag this is; null: on nothing.
inline ParameterNode CursorOn(LayoutNode const& child, PersistentProperties* bag) {
    ParameterNode cursor;
    cursor.m_pNode = &child;
    cursor.m_pProperties = bag;
    cursor.m_isContainer = child.m_isProfileList || child.m_isList;
    return cursor;
}

/// A flag in the bag; one that was never set is false.
inline bool FindFlag(PersistentProperties& bag, std::wstring const& name) {
    PersistentProperty<bool> const* const flag = BagAccess::FindFlag(bag, name);
    return flag != nullptr && !flag->m_deleted && flag->m_value;
}

/// Whether an entry of a profile list's bag is a profile that users see.
inline bool IsNamedProfile(NamedProperty const& entry) {
    return PropertyCast<PersistentProperties>(entry.property) != nullptr &&
           entry.name != Reserved().defaultProfile;
}

/// The cursor's bag. Throws when it has none.
PersistentProperties& RequireBag(ParameterNode const& cursor);

} // namespace Zantrel
