// SPDX-License-Identifier: Apache-2.0
#include <zantrel/database/parameter_node.h>

#include "database/add_entry.h"
#include "database/find_bag.h"
#include "database/format.h"
#include "database/layout_shapes.h"

#include <zantrel/database/parameter_misuse.h>
#include <zantrel/layout/layout_node.h>

#include <algorithm>

// Which precondition each operation tests, the layout's or the cursor's, and that HasProfile and Clear throw
// the texts of GetProfile and GetSize, is what callers were written against.

namespace Zantrel {

namespace {

using BagProperty = PersistentProperty<PersistentProperties>;

bool IsAny(ParameterNode const&) { return true; }
bool IsList(ParameterNode const& cursor) { return cursor.m_pNode != nullptr && cursor.m_pNode->m_isList; }
bool IsProfileList(ParameterNode const& cursor) {
    return cursor.m_pNode != nullptr && cursor.m_pNode->m_isProfileList;
}
bool IsProfile(ParameterNode const& cursor) { return IsProfileList(cursor) && !cursor.m_isContainer; }
bool IsListOrProfileList(ParameterNode const& cursor) { return IsProfileList(cursor) || IsList(cursor); }

void Require(bool condition, ParameterNode const& cursor, char const* text) {
    if (!condition) {
        throw ParameterMisuse(text, cursor.m_pNode);
    }
}

/// A flag's entry in the bag, and which places have the flag. An entry appears when the flag is first set,
/// and counts in comparisons from then on, also as false.
struct Flag {
    decltype(&ReservedNames::value) name;
    bool (*isOf)(ParameterNode const& cursor);
    char const* gettingText; ///< what is thrown elsewhere
    char const* settingText;
};

constexpr Flag ReadOnly{&ReservedNames::readOnly, IsAny, "", ""};
constexpr Flag Hidden{&ReservedNames::hidden, IsAny, "", ""};
constexpr Flag NameReadOnly{&ReservedNames::nameReadOnly, IsProfile, "GetNameReadOnly requires profile node",
                            "SetNameReadOnly requires profile node"};
constexpr Flag CanBeDeleted{&ReservedNames::canBeDeleted, IsProfile, "GetCanBeDeleted requires profile node",
                            "SetCanBeDeleted requires profile node"};
constexpr Flag UserDefaultProfile{&ReservedNames::userDefaultProfile, IsProfile,
                                  "GetUserDefaultProfile requires profile node",
                                  "SetUserDefaultProfile requires profile node"};
constexpr Flag DisableAddRemove{&ReservedNames::disableAddRemove, IsListOrProfileList,
                                "GetDisableAddRemove requires profile or category container node",
                                "SetDisableAddRemove requires profile or category container node"};

// A place without content has no flags; to set one there is misuse.
bool GetFlag(ParameterNode const& cursor, Flag const& flag) {
    Require(flag.isOf(cursor), cursor, flag.gettingText);
    return cursor.IsValid() && FindFlag(*cursor.m_pProperties, Reserved().*flag.name);
}

void SetFlag(ParameterNode const& cursor, Flag const& flag, bool value) {
    Require(flag.isOf(cursor), cursor, flag.settingText);
    BagAccess::SetFlag(RequireBag(cursor), Reserved().*flag.name, value);
}

/// Fills what is to be an item or profile of `list`, before it is added: where memory runs out, no list has
/// half an item.
void FillEntry(ParameterNode const& list, bool copyDefault, FittingShapes& fitting,
               PersistentProperties& content) {
    auto* const model = FindBag(RequireBag(list), Reserved().defaultProfile);
    if (model != nullptr && copyDefault) {
        BagAccess::AssignWithinLayout(content, *model);
    } else {
        FormatContent(*list.m_pNode, content, model, fitting);
    }
}

/// The cursor on an entry of a container, or on none for null.
ParameterNode EntryOf(ParameterNode const& container, PersistentProperties* bag) {
    ParameterNode entry;
    entry.m_pNode = container.m_pNode;
    entry.m_pProperties = bag;
    entry.m_pParentProperties = container.m_pProperties;
    return entry;
}

/// The sequence of a list's items; made where it is missing, also for an item that is wrongly taken for its
/// list.
ItemSequence& ItemsOf(ParameterNode const& list) {
    PersistentProperties& bag = RequireBag(list);
    ItemSequence* const items = FindItems(bag);
    return items != nullptr ? *items : bag.CreateValue<ItemSequence>(Reserved().value, true)->m_value;
}

ParameterNode MakeItem(ParameterNode const& list, bool copyDefault, FittingShapes& fitting) {
    ItemSequence& items = ItemsOf(list);
    PersistentProperties content;
    FillEntry(list, copyDefault, fitting, content);
    PersistentProperties& item = items.AddProperty();
    BagAccess::Swap(item, content);
    return EntryOf(list, &item);
}

ParameterNode MakeProfile(ParameterNode const& list, std::wstring const& name, bool copyDefault,
                          FittingShapes& fitting) {
    PersistentProperties content;
    FillEntry(list, copyDefault, fitting, content);
    PersistentProperties& profile = RequireBag(list).CreateValue<PersistentProperties>(name, true)->m_value;
    BagAccess::Swap(profile, content);
    return EntryOf(list, &profile);
}

} // namespace

PersistentProperties& RequireBag(ParameterNode const& cursor) {
    Require(cursor.IsValid(), cursor, "the cursor has no content");
    return *cursor.m_pProperties;
}

ParameterNode AddItem(ParameterNode const& list, FittingShapes& fitting) {
    return MakeItem(list, false, fitting);
}

ParameterNode AddProfile(ParameterNode const& list, std::wstring const& name, FittingShapes& fitting) {
    return MakeProfile(list, name, false, fitting);
}

ParameterNode ParameterNode::AddListNode(bool copyDefault) const {
    Require(IsList(*this), *this, "AddListNode requires list-container node");
    FittingShapes fitting;
    return MakeItem(*this, copyDefault, fitting);
}

ParameterNode ParameterNode::AddProfile(wchar_t const* name, bool copyDefault) {
    Require(IsProfileList(*this), *this, "Not possible to add a profile to a non-profile-list node");
    Require(name != nullptr, *this, "AddProfile requires a name");
    FittingShapes fitting;
    ParameterNode const profile = MakeProfile(*this, name, copyDefault && m_isContainer, fitting);
    if (copyDefault) {
        // Only now, since callers rely on the profile that stays.
        Require(m_isContainer, *this, "GetDefault requires container node");
    }
    return profile;
}

ParameterNode ParameterNode::GetListNode(unsigned long long index) const {
    if (m_pProperties == nullptr) {
        return {};
    }
    Require(IsList(*this), *this, "GetListNode requires list-container node");
    return EntryOf(*this, &ItemsOf(*this).GetProperty(static_cast<std::int32_t>(index)));
}

ParameterNode ParameterNode::GetProfile(wchar_t const* name) const {
    if (m_pProperties == nullptr) {
        return {};
    }
    Require(IsProfileList(*this), *this, "GetProfile requires profile or category container node");
    return EntryOf(*this, name != nullptr ? FindBag(*m_pProperties, std::wstring_view(name))
                                          : FindBag(*m_pProperties, Reserved().defaultProfile));
}

bool ParameterNode::HasProfile(wchar_t const* name) const {
    if (m_pProperties == nullptr) {
        return false;
    }
    Require(IsProfileList(*this), *this, "GetProfile requires profile or category container node");
    return name != nullptr && m_pProperties->HasValue<PersistentProperties>(name);
}

void ParameterNode::GetProfiles(std::vector<std::wstring>& names) const {
    names.clear();
    if (m_pProperties == nullptr) {
        return;
    }
    Require(IsProfileList(*this), *this, "GetProfiles requires profile or category container node");
    for (NamedProperty const& entry : *m_pProperties) {
        if (IsNamedProfile(entry)) {
            names.emplace_back(entry.name);
        }
    }
}

ParameterNode ParameterNode::GetDefault() const {
    if (m_pProperties == nullptr) {
        return {};
    }
    Require(m_isContainer, *this, "GetDefault requires container node");
    return EntryOf(*this, FindBag(*m_pProperties, Reserved().defaultProfile));
}

unsigned long long ParameterNode::GetSize() const {
    if (m_pProperties == nullptr) {
        return 0;
    }
    Require(m_isContainer, *this, "GetSize requires container node");
    if (IsList(*this)) {
        return ItemsOf(*this).GetNumProperties();
    }
    Require(IsProfileList(*this), *this, "GetProfiles requires profile or category container node");
    return static_cast<unsigned long long>(
        std::count_if(m_pProperties->begin(), m_pProperties->end(), IsNamedProfile));
}

void ParameterNode::Clear() {
    Require(m_isContainer, *this, "GetSize requires container node");
    if (IsList(*this)) {
        ItemsOf(*this).Clear();
        return;
    }
    PersistentProperties& bag = RequireBag(*this);
    Require(IsProfileList(*this), *this, "GetProfiles requires profile or category container node");
    BagAccess::RemoveWhere(bag, IsNamedProfile);
}

// Flags

bool ParameterNode::GetReadOnly() const { return GetFlag(*this, ReadOnly); }
void ParameterNode::SetReadOnly(bool value) { SetFlag(*this, ReadOnly, value); }

bool ParameterNode::GetHidden() const { return GetFlag(*this, Hidden); }
void ParameterNode::SetHidden(bool value) { SetFlag(*this, Hidden, value); }

bool ParameterNode::GetNameReadOnly() const { return GetFlag(*this, NameReadOnly); }
void ParameterNode::SetNameReadOnly(bool value) { SetFlag(*this, NameReadOnly, value); }

bool ParameterNode::GetCanBeDeleted() const { return GetFlag(*this, CanBeDeleted); }
void ParameterNode::SetCanBeDeleted(bool value) { SetFlag(*this, CanBeDeleted, value); }

bool ParameterNode::GetUserDefaultProfile() const { return GetFlag(*this, UserDefaultProfile); }
void ParameterNode::SetUserDefaultProfile(bool value) { SetFlag(*this, UserDefaultProfile, value); }

bool ParameterNode::GetDisableAddRemove() const { return GetFlag(*this, DisableAddRemove); }
void ParameterNode::SetDisableAddRemove(bool value) { SetFlag(*this, DisableAddRemove, value); }

} // namespace Zantrel
