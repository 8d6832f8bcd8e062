// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/entry_name.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>

namespace Zantrel {

/// Makes the names of one tree, as of a copied one. A counted text is never shared with the source, whose
/// tree may belong to another thread; within the copy each text stands once.
/// One copier serves one tree only.
class NameCopier {
public:
    /// What becomes of names that the source borrows from a layout: a copy on the same layout may go on
    /// borrowing, any other copy owns its names, since it may outlive the layout.
    enum class Borrowed { Keep, Own };

    /// Remembers the first `limit` texts; from then on new ones aren't shared.
    explicit NameCopier(Borrowed borrowed, std::size_t limit = static_cast<std::size_t>(-1))
        : m_borrowed(borrowed), m_limit(limit) {}

    bool KeepsBorrowed() const noexcept { return m_borrowed == Borrowed::Keep; }

    /// Throws std::bad_alloc.
    /// The same text gives the same name, for as long as the copier lives.
    EntryName operator()(EntryName const& name) {
        return m_borrowed == Borrowed::Keep && !name.IsCounted() ? name : Of(name.View());
    }
    /// The same for a text that is no name yet.
    EntryName Of(std::wstring_view text) {
        auto const known = m_copies.find(text);
        if (known != m_copies.end()) {
            return known->second;
        }
        EntryName copy = EntryName::Own(text);
        if (m_copies.size() < m_limit) {
            m_copies.emplace(copy.View(), copy); // a view that lives as long as the copy
        }
        return copy;
    }

private:
    Borrowed m_borrowed;
    std::size_t m_limit;
    /// The keys are views of the names beside them.
    std::unordered_map<std::wstring_view, EntryName> m_copies;
};

} // namespace Zantrel
