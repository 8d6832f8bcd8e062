// SPDX-License-Identifier: Apache-2.0
#include "editing/meant_list.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace Zantrel::Editing {

namespace {

bool StandsBelow(LayoutNode const& editor, LayoutNode const& node) {
    LayoutNode const* at = node.GetOwner();
    while (at != nullptr && at != &editor) {
        at = at->GetOwner();
    }
    return at != nullptr;
}

/// `find` gives the profile list of a name.
template <class Find>
LayoutNode const* ListOf(LayoutNode const& editor, LayoutNode const& choice, Find find) {
    LayoutNode const* const given = choice.m_profileNode;
    if (given != nullptr && given->m_isProfileList && StandsBelow(editor, *given)) {
        return given;
    }
    LayoutNode const* const named = choice.m_profileName.empty() ? nullptr : find(choice.m_profileName);
    return named != nullptr ? named : find(choice.m_nodeName);
}

} // namespace

LayoutNode const* MeantList(LayoutNode const& editor, LayoutNode const& choice) {
    return ListOf(editor, choice,
                  [&](std::wstring const& name) { return editor.FindProfileList(name, true); });
}

MeantLists::MeantLists(LayoutNode const& editor) : m_editor(editor) {
    // In the order in which FindProfileList looks: all children of a node before what stands below them.
    std::vector<LayoutNode const*> open{&editor};
    while (!open.empty()) {
        LayoutNode const* const node = open.back();
        open.pop_back();
        for (LayoutNode const* child : node->m_children) {
            LayoutNode const* const found = child->m_isProfileList ? node->GetNode(child->m_name) : nullptr;
            if (found != nullptr && found->m_isProfileList) {
                m_lists.emplace(child->m_name, found);
            }
        }
        std::reverse_copy(node->m_children.begin(), node->m_children.end(), std::back_inserter(open));
    }
}

LayoutNode const* MeantLists::Of(LayoutNode const& choice) const {
    return ListOf(m_editor, choice, [this](std::wstring const& name) {
        auto const list = m_lists.find(name);
        return list != m_lists.end() ? list->second : nullptr;
    });
}

} // namespace Zantrel::Editing
