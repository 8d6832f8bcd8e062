// SPDX-License-Identifier: Apache-2.0
#include "store/entry_tree.h"

#include <iterator>

namespace Zantrel {

TreeEntry const* EntryTree::Find(std::wstring_view name) const noexcept {
    auto const at = m_entries.lower_bound(name);
    return at != m_entries.end() && at->name.View() == name ? &*at : nullptr;
}

// The set puts an entry behind its equals, so the order of insertion stays; the links follow the set. The
// hint spares what comes in order, as from a file, all comparisons but one; from elsewhere the set searches
// itself.
void EntryTree::Insert(EntryName name, PropertyHandle property) {
    auto const at = m_entries.emplace_hint(m_entries.end(), std::move(name), property);
    at->next = AddressOf(std::next(at));
    if (at != m_entries.begin()) {
        std::prev(at)->next = &*at;
    }
}

PropertyHandle EntryTree::TakeFirst(std::wstring_view name) noexcept {
    return Take(m_entries.lower_bound(name));
}

PropertyHandle EntryTree::Take(Entries::const_iterator at) noexcept {
    PropertyHandle const property = at->property;
    if (at != m_entries.begin()) {
        // Before the erasure, behind which the link would name what is gone.
        std::prev(at)->next = at->next;
    }
    m_entries.erase(at);
    return property;
}

} // namespace Zantrel
