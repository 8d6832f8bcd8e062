// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/walk.h>
#include <zantrel/layout/layout_node.h>

namespace Zantrel::Editing {

inline bool IsContainer(LayoutNode const& node) { return node.m_isList || node.m_isProfileList; }
constexpr bool IsContainer(PlaceKind kind) {
    return kind == PlaceKind::List || kind == PlaceKind::ProfileList;
}
constexpr bool IsEntry(PlaceKind kind) {
    return kind == PlaceKind::Item || kind == PlaceKind::Profile || kind == PlaceKind::DefaultProfile;
}

} // namespace Zantrel::Editing
