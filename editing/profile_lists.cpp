// SPDX-License-Identifier: Apache-2.0
#include "editing/profile_lists.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace Zantrel::Editing {

// Nodes are looked through parent by parent along each branch, so that of one name the list comes first that
// a search finds which looks at a node's own children before it goes below them.
void ProfileLists::LookThrough() {
    std::vector<LayoutNode const*> open;
    if (m_editor != nullptr && !std::exchange(m_wasLookedThrough, true)) {
        open.push_back(m_editor);
    }
    while (!open.empty()) {
        LayoutNode const& node = *open.back();
        open.pop_back();
        auto const begin = static_cast<std::ptrdiff_t>(open.size());
        std::copy(node.m_children.begin(), node.m_children.end(), std::back_inserter(open));
        std::reverse(open.begin() + begin, open.end());
        for (auto child = open.begin() + begin; child != open.end(); ++child) { // the last of a name first
            // Of a name the first one stays. Lists that no name finds are among all of them, too: a choice
            // may lead to one by its address.
            if ((*child)->m_isProfileList) {
                m_byName.emplace((*child)->m_name, *child);
                m_all.insert(*child);
            }
        }
    }
}

LayoutNode const* ProfileLists::Find(std::wstring_view name) {
    LookThrough();
    auto const found = m_byName.find(name);
    return found != m_byName.end() ? found->second : nullptr;
}

LayoutNode const* ProfileLists::ListOf(LayoutNode const& choice) {
    LookThrough();
    // Compared by its address only: in a copied layout it may be a node of a source that has ended.
    if (m_all.count(choice.m_profileNode) != 0) {
        return choice.m_profileNode;
    }
    LayoutNode const* const named = choice.m_profileName.empty() ? nullptr : Find(choice.m_profileName);
    return named != nullptr ? named : Find(choice.m_nodeName);
}

std::wstring const& ProfileLists::NameOf(LayoutNode const& choice) {
    return choice.m_profileName.empty() ? choice.m_nodeName : choice.m_profileName;
}

} // namespace Zantrel::Editing
