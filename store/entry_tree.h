// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/entry_block.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <set>
#include <string_view>
#include <utility>

namespace Zantrel {

/// An entry of a table that has many. Entries of one name stand in the order of insertion. Each names the one
/// behind it, so that an iterator over any form of table is one address.
struct TreeEntry : Entry {
    TreeEntry(EntryName itsName, PropertyHandle itsProperty) : Entry{std::move(itsName), itsProperty} {}
    /// Mutable, as a set's elements are const; it plays no part in their order.
    mutable TreeEntry const* next = nullptr;
};

/// Also against a name alone, so that a search makes no entry.
struct TreeEntryLess {
    using is_transparent = void;
    bool operator()(Entry const& left, Entry const& right) const noexcept {
        return EntryNameLess()(left.name.View(), right.name.View());
    }
    bool operator()(Entry const& left, std::wstring_view right) const noexcept {
        return EntryNameLess()(left.name.View(), right);
    }
    bool operator()(std::wstring_view left, Entry const& right) const noexcept {
        return EntryNameLess()(left, right.name.View());
    }
};

/// The entries of a table that outgrew a block.
class EntryTree {
public:
    using Entries = std::multiset<TreeEntry, TreeEntryLess>;

    EntryTree() = default;
    EntryTree(EntryTree const&) = delete;
    EntryTree& operator=(EntryTree const&) = delete;
    ~EntryTree() { EntryBlock::FreeChain(m_older); }

    /// How many entries there are.
    std::size_t Size() const noexcept { return m_entries.size(); }
    /// The entry of the least name; null where there is none.
    TreeEntry const* First() const noexcept { return AddressOf(m_entries.begin()); }
    /// The first entry of `name`, or null.
    TreeEntry const* Find(std::wstring_view name) const noexcept;
    /// Whether `name` is greater than all there are. There must be one.
    bool EndsBefore(std::wstring_view name) const noexcept {
        return TreeEntryLess()(*m_entries.rbegin(), name);
    }

    /// Behind its equals. When this throws std::bad_alloc, the property is still the caller's.
    void Insert(EntryName name, PropertyHandle property);
    /// Takes out the first entry of its name and gives its property, which the caller ends.
    PropertyHandle TakeFirst(std::wstring_view name) noexcept;
    /// The same for the last entry of all. There must be one.
    PropertyHandle TakeLast() noexcept { return Take(std::prev(m_entries.end())); }
    /// Takes out each entry for which `drops` is true and hands its property to `end`.
    template <class Drops, class End> void TakeWhere(Drops const& drops, End const& end) {
        for (auto at = m_entries.begin(); at != m_entries.end();) {
            auto const judged = at++;
            if (drops(*judged)) {
                end(Take(judged));
            }
        }
    }

    /// Keeps a block, given by its word and without entries, in which properties of this table live. At most
    /// one, which names those before it itself.
    void KeepOlder(std::uintptr_t older) noexcept { m_older = older; }

    std::uintptr_t m_pending = 0; ///< while this tree ends: see ending.cpp

private:
    TreeEntry const* AddressOf(Entries::const_iterator at) const noexcept {
        return at != m_entries.end() ? &*at : nullptr;
    }
    PropertyHandle Take(Entries::const_iterator at) noexcept;

    Entries m_entries;
    /// Freed with the tree, when all properties have ended.
    std::uintptr_t m_older = 0;
};

} // namespace Zantrel
