// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "editing/place_kind.h"

#include <zantrel/database/parameter_node.h>
#include <zantrel/database/parameter_view.h>
#include <zantrel/layout/layout_node.h>

#include <string_view>

/// The flags that cursors have, each with the word that files have for it.
namespace Zantrel::Editing {

struct PlaceFlag {
    std::wstring_view word;
    bool (ParameterView::*get)() const;
    void (ParameterNode::*set)(bool);
    bool (*isOf)(LayoutNode const& node, bool isContainer); ///< where else asking for it throws
};

inline constexpr auto AnyPlace = [](LayoutNode const&, bool) { return true; };
inline constexpr auto Profile = [](LayoutNode const& node, bool isContainer) {
    return node.m_isProfileList && !isContainer;
};
inline constexpr auto OfContainer = [](LayoutNode const& node, bool) { return IsContainer(node); };

inline constexpr PlaceFlag PlaceFlags[] = {
    {L"ReadOnly", &ParameterView::GetReadOnly, &ParameterNode::SetReadOnly, AnyPlace},
    {L"Hidden", &ParameterView::GetHidden, &ParameterNode::SetHidden, AnyPlace},
    {L"NameReadOnly", &ParameterView::GetNameReadOnly, &ParameterNode::SetNameReadOnly, Profile},
    {L"CanBeDeleted", &ParameterView::GetCanBeDeleted, &ParameterNode::SetCanBeDeleted, Profile},
    {L"UserDefaultProfile", &ParameterView::GetUserDefaultProfile, &ParameterNode::SetUserDefaultProfile,
     Profile},
    {L"DisableAddRemove", &ParameterView::GetDisableAddRemove, &ParameterNode::SetDisableAddRemove,
     OfContainer},
};

inline bool HasFlag(ParameterView const& cursor, PlaceFlag const& flag) {
    LayoutNode const* const node = cursor.GetLayoutNode();
    return cursor.IsValid() && node != nullptr && flag.isOf(*node, cursor.IsContainer());
}

/// Whether it is set. False also where there is no such flag.
inline bool IsSet(ParameterView const& cursor, PlaceFlag const& flag) {
    return HasFlag(cursor, flag) && (cursor.*flag.get)();
}

} // namespace Zantrel::Editing
