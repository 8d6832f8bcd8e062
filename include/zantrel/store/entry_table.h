// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/store/entry_name.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <set>
#include <string_view>

class IPersistentProperty;

namespace Zantrel {

struct EntryBlock;
struct EntryTree;
class NameCopier;
class RecordRoom;

/// One entry of a bag, as an iterator gives it. Both members live as long as the entry.
struct NamedProperty {
    std::wstring_view name;
    IPersistentProperty* property; ///< never null, owned by the bag
};

/// An owned property. One that was built inside the memory of its bag is ended there and not freed.
class ZANTREL_EXPORT PropertyHandle {
public:
    static PropertyHandle Heap(IPersistentProperty* property) noexcept { return PropertyHandle(property, 0); }
    static PropertyHandle Placed(IPersistentProperty* property) noexcept {
        return PropertyHandle(property, 1);
    }

    IPersistentProperty* Get() const noexcept {
        return reinterpret_cast<IPersistentProperty*>(m_word & ~Mask);
    }
    bool IsPlaced() const noexcept { return (m_word & Mask) != 0; }
    void End() noexcept;

    std::uintptr_t Word() const noexcept { return m_word; }
    static PropertyHandle FromWord(std::uintptr_t word) noexcept { return PropertyHandle(word); }

private:
    static constexpr std::uintptr_t Mask = 1;
    explicit PropertyHandle(std::uintptr_t word) noexcept : m_word(word) {}
    PropertyHandle(IPersistentProperty* property, std::uintptr_t placed) noexcept
        : m_word(reinterpret_cast<std::uintptr_t>(property) | placed) {}
    std::uintptr_t m_word;
};

struct Entry {
    EntryName name;
    PropertyHandle property;
};

struct EntryLess {
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

/// What a bag holds: an ordered multi-map from name to owned property, equal names in the order of insertion.
/// A job holds millions of bags, most with the one entry "Value" or a few entries, so a table is one word:
/// empty, or the property "Value" alone, or a sorted block, or, when it outgrows EntryTable::BlockLimit, a
/// tree.
class ZANTREL_EXPORT EntryTable {
public:
    static constexpr std::uint32_t BlockLimit = 32;
    using Tree = std::multiset<Entry, EntryLess>;

    /// Walks the entries in order. Good until an entry is added or removed.
    class ZANTREL_EXPORT Iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = NamedProperty;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = NamedProperty;

        NamedProperty operator*() const;
        EntryName Name() const;
        Iterator& operator++();
        Iterator operator++(int) {
            Iterator old = *this;
            ++*this;
            return old;
        }
        bool operator==(Iterator const& other) const { return m_at == other.m_at; }
        bool operator!=(Iterator const& other) const { return m_at != other.m_at; }

    private:
        friend class EntryTable;
        EntryTable const* m_table = nullptr;
        void const* m_at = nullptr; ///< the Entry, or the table's one property; null at the end
        Tree::const_iterator m_node{};
    };

    EntryTable() noexcept = default;
    EntryTable(EntryTable const&) = delete;
    EntryTable& operator=(EntryTable const&) = delete;
    ~EntryTable() {
        if (m_word != 0) {
            Clear();
        }
    }

    std::size_t Size() const noexcept;
    Iterator begin() const;
    Iterator end() const { return Iterator(); }
    /// The first entry of `name`, or end(); the entries of that name follow each other.
    Iterator Find(std::wstring_view name) const;

    /// The property of the first entry of `name`, or null.
    IPersistentProperty* FindFirst(std::wstring_view name) const;
    /// The same for a text that the entry has borrowed as its name; then no text is compared.
    IPersistentProperty* FindBorrowed(std::wstring const& name) const;

    /// The one property of a table that holds "Value" alone, as every leaf of a database does; otherwise
    /// null.
    IPersistentProperty* GetSingle() const noexcept { return IsSingle() ? Single().Get() : nullptr; }

    /// Adds a property behind the entries of its name. Owns it, also when this throws std::bad_alloc.
    void Insert(EntryName name, PropertyHandle property);
    /// Ends and removes the first entry of `name`. Whether there was one.
    bool RemoveFirst(std::wstring_view name);
    /// Ends and removes each entry for which `drops` is true. When `drops` throws, the entries already judged
    /// are gone.
    void RemoveWhere(std::function<bool(NamedProperty const&)> const& drops);
    void Clear() noexcept;
    void Swap(EntryTable& other) noexcept { std::swap(m_word, other.m_word); }

    /// Makes room for `count` more entries and for `bytes` of properties in one allocation, to be used up by
    /// Emplace. A table that is a tree or would become one gives no room, and Emplace then takes the heap.
    RecordRoom Reserve(std::size_t count, std::size_t bytes);
    /// Inserts a new T made from `arguments`, in `room` as long as that lasts.
    template <class T, class... Arguments>
    T& Emplace(EntryName name, RecordRoom& room, Arguments const&... arguments);
    /// Inserts copies of all entries of `source`, which is another table.
    void CopyFrom(EntryTable const& source, NameCopier& names);

private:
    // The word: 0 for an empty table, an EntryBlock's address, or with one of these bits a PropertyHandle or
    // an EntryTree's address. All these objects are aligned to eight bytes; bit 0 is the handle's own.
    static constexpr std::uintptr_t SingleBit = 2, TreeBit = 4;

    bool IsSingle() const noexcept { return (m_word & SingleBit) != 0; }
    bool IsTree() const noexcept { return (m_word & TreeBit) != 0; }
    PropertyHandle Single() const noexcept { return PropertyHandle::FromWord(m_word & ~SingleBit); }
    EntryBlock* Block() const noexcept { return reinterpret_cast<EntryBlock*>(m_word); }
    EntryTree* AsTree() const noexcept { return reinterpret_cast<EntryTree*>(m_word & ~TreeBit); }

    std::byte* Grow(std::size_t capacity, std::size_t bytes);
    void TurnIntoTree();
    Iterator At(void const* at) const;
    Iterator At(Tree::const_iterator node) const;

    std::uintptr_t m_word = 0;
};

} // namespace Zantrel
