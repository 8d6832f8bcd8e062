// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/layout_node.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace Zantrel::Editing {

/// The profile lists below a node, as a rule "ProfileEditor", by name: which of them a choice from profiles
/// means. Borrows the layout, which may not change meanwhile.
class ProfileLists {
public:
    /// Null is a layout without any.
    explicit ProfileLists(LayoutNode const* editor) : m_editor(editor) {}

    /// The list of that name which LayoutNode::FindProfileList finds, also in a copied layout; null when
    /// there is none. Looks through the layout at the first call only.
    LayoutNode const* Find(std::wstring_view name);
    /// The list whose profiles can be chosen at a node of type OptionsFromProfiles: its m_profileNode where
    /// that is a profile list of this layout, else the one of its m_profileName, else of its m_nodeName. Null
    /// when there is none.
    LayoutNode const* ListOf(LayoutNode const& choice);
    /// By what `choice` names its list, for a person.
    static std::wstring const& NameOf(LayoutNode const& choice);

private:
    void LookThrough();

    LayoutNode const* m_editor;
    bool m_wasLookedThrough = false;
    std::unordered_map<std::wstring_view, LayoutNode const*> m_byName;
    std::unordered_set<LayoutNode const*> m_all;
};

} // namespace Zantrel::Editing
