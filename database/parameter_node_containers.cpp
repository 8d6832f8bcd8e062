// SPDX-License-Identifier: Apache-2.0
#include <zantrel/database/parameter_node.h>

#include "database/find_bag.h"
#include "database/format.h"

#include <zantrel/layout/layout_node.h>

#include <algorithm>
#include <stdexcept>

// Which precondition each operation tests, the layout's or the cursor's, and that HasProfile and Clear throw
// the texts of GetProfile and GetSize, is what callers were written against.

namespace Zantrel {

namespace {

using BagProperty = PersistentProperty<PersistentProperties>;

bool IsList(ParameterNode const& cursor) { return cursor.m_pNode != nullptr && cursor.m_pNode->m_isList; }
bool IsProfileList(ParameterNode const& cursor) {
    return cursor.m_pNode != nullptr && cursor.m_pNode->m_isProfileList;
}
bool IsProfile(ParameterNode const& cursor) { return IsProfileList(cursor) && !cursor.m_isContainer; }
bool IsListOrProfileList(ParameterNode const& cursor) { return IsProfileList(cursor) || IsList(cursor); }

void Require(bool condition, char const* message) {
    if (!condition) {
        throw std::runtime_error(message);
    }
}

bool GetFlag(ParameterNode const& cursor, std::wstring const& name) {
    if (cursor.m_pProperties == nullptr) {
        return false;
    }
    auto const* flag = PropertyCast<bool>(cursor.m_pProperties->_Entries().FindBorrowed(name));
    return flag != nullptr && !flag->IsDeleted() && flag->m_value;
}

void SetFlag(ParameterNode const& cursor, std::wstring const& name, bool value) {
    RequireBag(cursor).SetValue<bool>(name, value);
}

/// Fills what is to be an item or profile of `list`, before it is added: where memory runs out, no list has
/// half an item.
void FillItem(ParameterNode const& list, bool copyDefault, PersistentProperties& content) {
    auto const* model = copyDefault ? FindBag(RequireBag(list), Reserved().defaultProfile) : nullptr;
    if (model != nullptr) {
        content._AssignWithinLayout(*model);
    } else {
        FormatContent(*list.m_pNode, content);
    }
}

} // namespace

PersistentProperties& RequireBag(ParameterNode const& cursor) {
    Require(cursor.m_pProperties != nullptr, "the cursor has no content");
    return *cursor.m_pProperties;
}

/// The sequence of a list's items; made where it is missing, also for an item that is wrongly taken for its
/// list.
IndexedProperties<PersistentProperties>& ParameterNode::Items() const {
    PersistentProperties& bag = RequireBag(*this);
    ItemSequence* const items = FindItems(bag);
    return items != nullptr ? *items : bag.CreateValue<ItemSequence>(Reserved().value, true)->m_value;
}

ParameterNode ParameterNode::Item(PersistentProperties* bag) const {
    ParameterNode item;
    item.m_pNode = m_pNode;
    item.m_pProperties = bag;
    item.m_pParentProperties = m_pProperties;
    return item;
}

ParameterNode ParameterNode::AddListNode(bool copyDefault) const {
    Require(IsList(*this), "AddListNode requires list-container node");
    auto& items = Items();
    PersistentProperties content;
    FillItem(*this, copyDefault, content);
    ParameterNode item = Item(&items.AddProperty());
    item.m_pProperties->_Entries().Swap(content._Entries());
    return item;
}

ParameterNode ParameterNode::AddProfile(wchar_t const* name, bool copyDefault) {
    Require(IsProfileList(*this), "Not possible to add a profile to a non-profile-list node");
    Require(name != nullptr, "AddProfile requires a name");
    PersistentProperties content;
    FillItem(*this, copyDefault && m_isContainer, content);
    ParameterNode profile = Item(&RequireBag(*this).CreateValue<PersistentProperties>(name, true)->m_value);
    profile.m_pProperties->_Entries().Swap(content._Entries());
    if (copyDefault) {
        Require(m_isContainer, "GetDefault requires container node"); // the profile stays
    }
    return profile;
}

ParameterNode ParameterNode::GetListNode(unsigned long long index) const {
    if (m_pProperties == nullptr) {
        return {};
    }
    Require(IsList(*this), "GetListNode requires list-container node");
    return Item(&Items().GetProperty(static_cast<std::int32_t>(index)));
}

ParameterNode ParameterNode::GetProfile(wchar_t const* name) const {
    if (m_pProperties == nullptr) {
        return {};
    }
    Require(IsProfileList(*this), "GetProfile requires profile or category container node");
    return Item(name != nullptr ? FindBag(*m_pProperties, std::wstring_view(name))
                                : FindBag(*m_pProperties, Reserved().defaultProfile));
}

bool ParameterNode::HasProfile(wchar_t const* name) const {
    if (m_pProperties == nullptr) {
        return false;
    }
    Require(IsProfileList(*this), "GetProfile requires profile or category container node");
    return name != nullptr && m_pProperties->HasValue<PersistentProperties>(name);
}

void ParameterNode::GetProfiles(std::vector<std::wstring>& names) const {
    names.clear();
    if (m_pProperties == nullptr) {
        return;
    }
    Require(IsProfileList(*this), "GetProfiles requires profile or category container node");
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
    Require(m_isContainer, "GetDefault requires container node");
    return Item(FindBag(*m_pProperties, Reserved().defaultProfile));
}

unsigned long long ParameterNode::GetSize() const {
    if (m_pProperties == nullptr) {
        return 0;
    }
    Require(m_isContainer, "GetSize requires container node");
    if (IsList(*this)) {
        return Items().GetNumProperties();
    }
    Require(IsProfileList(*this), "GetProfiles requires profile or category container node");
    return static_cast<unsigned long long>(
        std::count_if(m_pProperties->begin(), m_pProperties->end(), IsNamedProfile));
}

void ParameterNode::Clear() {
    Require(m_isContainer, "GetSize requires container node");
    if (IsList(*this)) {
        Items().Clear();
        return;
    }
    PersistentProperties& bag = RequireBag(*this);
    Require(IsProfileList(*this), "GetProfiles requires profile or category container node");
    bag._Entries().RemoveWhere(IsNamedProfile);
}

// Flags

bool ParameterNode::GetReadOnly() const { return GetFlag(*this, Reserved().readOnly); }
void ParameterNode::SetReadOnly(bool value) { SetFlag(*this, Reserved().readOnly, value); }
bool ParameterNode::GetHidden() const { return GetFlag(*this, Reserved().hidden); }
void ParameterNode::SetHidden(bool value) { SetFlag(*this, Reserved().hidden, value); }

bool ParameterNode::GetNameReadOnly() const {
    Require(IsProfile(*this), "GetNameReadOnly requires profile node");
    return GetFlag(*this, Reserved().nameReadOnly);
}

void ParameterNode::SetNameReadOnly(bool value) {
    Require(IsProfile(*this), "SetNameReadOnly requires profile node");
    SetFlag(*this, Reserved().nameReadOnly, value);
}

bool ParameterNode::GetCanBeDeleted() const {
    Require(IsProfile(*this), "GetCanBeDeleted requires profile node");
    return GetFlag(*this, Reserved().canBeDeleted);
}

void ParameterNode::SetCanBeDeleted(bool value) {
    Require(IsProfile(*this), "SetCanBeDeleted requires profile node");
    SetFlag(*this, Reserved().canBeDeleted, value);
}

bool ParameterNode::GetUserDefaultProfile() const {
    Require(IsProfile(*this), "GetUserDefaultProfile requires profile node");
    return GetFlag(*this, Reserved().userDefaultProfile);
}

void ParameterNode::SetUserDefaultProfile(bool value) {
    Require(IsProfile(*this), "SetUserDefaultProfile requires profile node");
    SetFlag(*this, Reserved().userDefaultProfile, value);
}

bool ParameterNode::GetDisableAddRemove() const {
    Require(IsListOrProfileList(*this), "GetDisableAddRemove requires profile or category container node");
    return GetFlag(*this, Reserved().disableAddRemove);
}

void ParameterNode::SetDisableAddRemove(bool value) {
    Require(IsListOrProfileList(*this), "SetDisableAddRemove requires profile or category container node");
    SetFlag(*this, Reserved().disableAddRemove, value);
}

} // namespace Zantrel
