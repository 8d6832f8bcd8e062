// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/entry_forms.h"
#include "store/record_room.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace Zantrel {

/// Reads the table that a word stands for. Passed by value, and good until the table changes.
class EntryReader {
public:
    explicit EntryReader(std::uintptr_t word) noexcept : m_word(word) {}

    std::size_t Size() const noexcept;
    /// Places in order; null behind the last one.
    EntryPlace First() const noexcept;
    EntryPlace Next(EntryPlace place) const noexcept;
    /// The first entry of `name`, or null; the entries of that name follow each other.
    EntryPlace Find(std::wstring_view name) const noexcept;
    /// Whether it can be told at once that `name` is greater than all there are, however many.
    bool EndsBefore(std::wstring_view name) const noexcept;
    /// As Find, for a text that the entry may have borrowed as its name; then no text is compared.
    EntryPlace FindBorrowed(std::wstring const& name) const noexcept;

    /// `place` is one of this table. A view of the name is good while the entry lives.
    NamedProperty At(EntryPlace place) const noexcept;
    /// Shares the text of a counted name, so the copy must stay within the tree.
    EntryName NameAt(EntryPlace place) const noexcept;
    IPersistentProperty* PropertyAt(EntryPlace place) const noexcept {
        return place != nullptr ? At(place).property : nullptr;
    }
    /// The property of a table that holds "Value" alone; otherwise null.
    IPersistentProperty* Sole() const noexcept;

private:
    std::uintptr_t m_word;
};

/// Changes the table that a word stands for. When memory runs out, std::bad_alloc passes through and the
/// table is as it was.
/// It holds nothing itself: as many of them as wanted may stand for one word, one after another.
class EntryTable {
public:
    /// Searching a block and inserting into it take time in its length; what has more becomes a tree.
    static constexpr std::uint32_t BlockLimit = 32;

    explicit EntryTable(std::uintptr_t& word) noexcept : m_word(word) {}

    EntryReader Reader() const noexcept { return EntryReader(m_word); }

    /// For the next insertion: its name isn't less than `name`, which may be null. Where that is the last
    /// entry's, no text is looked at.
    EntryTable& Behind(EntryName const* name) noexcept {
        m_before = name;
        return *this;
    }
    /// Adds a property behind the entries of its name. Owns it, also when this throws.
    void Insert(EntryName name, PropertyHandle property);
    /// Ends and removes the first entry of `name`. Whether there was one.
    bool RemoveFirst(std::wstring_view name);
    /// Ends and removes each entry for which `drops` is true. When `drops` throws, the entries already judged
    /// are gone.
    void RemoveWhere(EntryJudge const& drops);

    /// Makes room for `count` more entries and for `bytes` of properties in one allocation, to be used up by
    /// Emplace. A table that is a tree or would become one gives no room, and Emplace then takes the heap.
    RecordRoom Reserve(std::size_t count, std::size_t bytes);
    /// Inserts a new T made from `arguments`, in `room` as long as that lasts.
    template <class T, class... Arguments>
    T& Emplace(EntryName name, RecordRoom& room, Arguments const&... arguments) {
        void* const place = room.Take(RecordRoom::SizeOf<T>());
        T* const property = place != nullptr ? ::new (place) T(arguments...) : new T(arguments...);
        Insert(std::move(name),
               place != nullptr ? PropertyHandle::Placed(property) : PropertyHandle::Heap(property));
        return *property;
    }
    /// Gives each entry a name that `names` makes of the one it has.
    template <class Names> void Rename(Names& names) {
        if (IsShaped()) { // a shape's names are a layout's
            LeaveShape();
        }
        EntryReader const reader = Reader();
        for (EntryPlace at = reader.First(); at != nullptr; at = reader.Next(at)) {
            SetName(at, names(reader.NameAt(at)));
        }
    }

private:
    /// Gives the new block, which the word then stands for.
    EntryBlock* Grow(std::size_t capacity, std::size_t bytes);
    /// The same with a tree.
    EntryTree* TurnIntoTree();
    bool IsShaped() const noexcept;
    void LeaveShape();
    /// To one of the same text, so that the order stays.
    void SetName(EntryPlace place, EntryName name) noexcept;

    /// The bag's own word.
    std::uintptr_t& m_word;
    EntryName const* m_before = nullptr;
};

} // namespace Zantrel
