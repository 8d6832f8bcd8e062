// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/entry_name.h"

#include <string_view>
#include <unordered_map>

namespace Zantrel {

/// Makes the names of a copied tree. A counted text is never shared with the source, whose tree may belong to
/// another thread; within the copy each text stands once.
/// One copier serves one copied tree only.
class NameCopier {
public:
    /// What becomes of names that the source borrows from a layout: a copy on the same layout may go on
    /// borrowing, any other copy owns its names, since it may outlive the layout.
    enum class Borrowed { Keep, Own };

    explicit NameCopier(Borrowed borrowed) : m_borrowed(borrowed) {}

    bool KeepsBorrowed() const noexcept { return m_borrowed == Borrowed::Keep; }

    /// Throws std::bad_alloc.
    /// The same text gives the same name, for as long as the copier lives.
    EntryName operator()(EntryName const& name) {
        if (m_borrowed == Borrowed::Keep && !name.IsCounted()) {
            return name;
        }
        auto const known = m_copies.find(name.View());
        if (known != m_copies.end()) {
            return known->second;
        }
        EntryName copy = EntryName::Own(name.View());
        std::wstring_view const text = copy.View(); // which lives as long as the copy
        return m_copies.emplace(text, std::move(copy)).first->second;
    }

private:
    Borrowed m_borrowed;
    /// The keys are views of the names beside them.
    std::unordered_map<std::wstring_view, EntryName> m_copies;
};

} // namespace Zantrel
