// SPDX-License-Identifier: Apache-2.0
#include "editing/profile_lists.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace Zantrel::Editing {

namespace {

/// The nodes below `top`, level by level along each branch, so that of one name the list comes first that a
/// search finds which looks at a node's own children before it goes below them.
std::unordered_map<std::wstring_view, LayoutNode const*> ListsBelow(LayoutNode const& top) {
    std::unordered_map<std::wstring_view, LayoutNode const*> lists;
    std::vector<LayoutNode const*> open{&top};
    while (!open.empty()) {
        LayoutNode const& node = *open.back();
        open.pop_back();
        std::size_t const begin = open.size();
        std::copy(node.m_children.begin(), node.m_children.end(), std::back_inserter(open));
        std::reverse(open.begin() + static_cast<std::ptrdiff_t>(begin), open.end());
        for (std::size_t i = begin; i != open.size(); ++i) { // the last child of a name first
            if (open[i]->m_isProfileList) {
                lists.emplace(open[i]->m_name, open[i]);
            }
        }
    }
    return lists;
}

bool IsBelow(LayoutNode const* node, LayoutNode const* top) {
    while (node != nullptr && node != top) {
        node = node->GetOwner();
    }
    return node != nullptr;
}

} // namespace

LayoutNode const* ProfileLists::Find(std::wstring_view name) {
    if (m_editor == nullptr) {
        return nullptr;
    }
    if (!m_lists) {
        m_lists = ListsBelow(*m_editor);
    }
    auto const found = m_lists->find(name);
    return found != m_lists->end() ? found->second : nullptr;
}

LayoutNode const* ProfileLists::ListOf(LayoutNode const& choice) {
    LayoutNode const* const given = choice.m_profileNode;
    // An address can't be asked whether it is still one: in a copied layout the source must live, too.
    bool const isHere = given != nullptr && IsBelow(given, m_editor) && given->m_isProfileList;
    return isHere ? given : Find(NameOf(choice));
}

std::wstring const& ProfileLists::NameOf(LayoutNode const& choice) {
    return choice.m_profileName.empty() ? choice.m_nodeName : choice.m_profileName;
}

} // namespace Zantrel::Editing
