// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/export.h>
#include <zantrel/editing/place.h>

#include <string>
#include <vector>

namespace Zantrel::Editing {

/// One thing that can be chosen.
struct Choice {
    std::wstring value;            ///< what SetText takes
    std::wstring displayName;      ///< of the layout; the value where it has none
    bool isDefaultProfile = false; ///< the default profile of the list, which has no name of its own
};

/// What can be chosen at a place: the options of an Options node in their order, or for a choice from
/// profiles the default profile, as "Default", and then the names of the list, as ParameterNode::GetProfiles
/// has them, each once. Where a profile is named "Default" itself, the default profile is
/// "::DefaultProfile::".
///
/// The list is the node's m_profileNode where that is a profile list of this layout, else the one that
/// FindProfileList finds by m_profileName, else by m_nodeName; which list of that node counts is found as the
/// source of a condition is (see LookOf). Empty for every other node, for StandardOptions, whose
/// choices the driver knows, and where there is no list. Takes time in the nodes of the layout.
ZANTREL_EDITING_EXPORT std::vector<Choice> ChoicesOf(PlaceView const& place);

} // namespace Zantrel::Editing
