// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/layout_node.h>

#include <string_view>
#include <unordered_map>

namespace Zantrel::Editing {

/// The profile list of the layout from which a choice takes its values, or null: the one that was given as a
/// node, if that stands below `editor` and is one; else the one named by m_profileName, else by m_nodeName,
/// each time the first that LayoutNode::FindProfileList finds below `editor`. Which of its instances counts
/// for a value Scope::Find tells.
///
/// A look at one choice; for many of them take MeantLists.
LayoutNode const* MeantList(LayoutNode const& editor, LayoutNode const& choice);

/// The same for all choices below one profile editor, in constant time each after one walk over its nodes.
/// Borrows them.
class MeantLists {
public:
    explicit MeantLists(LayoutNode const& editor);
    LayoutNode const* Of(LayoutNode const& choice) const;

private:
    LayoutNode const& m_editor;
    std::unordered_map<std::wstring_view, LayoutNode const*> m_lists; ///< by name
};

} // namespace Zantrel::Editing
