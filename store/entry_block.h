// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/entry_name.h"

#include <zantrel/store/persistent_property.h>

#include <cstddef>
#include <cstdint>
#include <new>

namespace Zantrel {

/// An owned property, one word. One that was built inside the memory of a bag is ended there and not freed.
class PropertyHandle {
public:
    /// From new: End deletes it.
    static PropertyHandle Heap(IPersistentProperty* property) noexcept { return PropertyHandle(property, 0); }
    /// Built in a block's room: End calls the destructor only, and the memory goes with the block.
    static PropertyHandle Placed(IPersistentProperty* property) noexcept {
        return PropertyHandle(property, PlacedBit);
    }

    /// Good until End; nothing is counted, so one of all copies of a handle ends the property.
    IPersistentProperty* Get() const noexcept {
        return reinterpret_cast<IPersistentProperty*>(m_word & ~PlacedBit);
    }
    void End() noexcept {
        if ((m_word & PlacedBit) != 0) {
            Get()->~IPersistentProperty();
        } else {
            delete Get();
        }
    }

    /// For a table of one entry, which is this word and a bit that says so.
    std::uintptr_t Word() const noexcept { return m_word; }
    static PropertyHandle FromWord(std::uintptr_t word) noexcept { return PropertyHandle(word); }

private:
    /// Free in every address of a property.
    static constexpr std::uintptr_t PlacedBit = 1;
    explicit PropertyHandle(std::uintptr_t word) noexcept : m_word(word) {}
    PropertyHandle(IPersistentProperty* property, std::uintptr_t placed) noexcept
        : m_word(reinterpret_cast<std::uintptr_t>(property) | placed) {}
    std::uintptr_t m_word;
};

/// Two words. The name is owned by the entry; the property is ended by whoever takes the entry out.
struct Entry {
    EntryName name;
    PropertyHandle property;
};
static_assert(sizeof(Entry) == 2 * sizeof(std::uintptr_t));

/// A header of eight bytes, then `capacity` places for entries, the first `size` of them in use and sorted,
/// then the room that Reserve was asked for. A block that was outgrown lives on behind the new one, without
/// its entries, where properties were placed in it or in one before it: their addresses stay. The last of
/// such a chain may be a ShapedBlock.
struct EntryBlock {
    /// As much as the member can hold; tables stay far below it.
    static constexpr std::uint32_t CapacityMask = (1u << 30) - 1;

    std::uint32_t size = 0;
    std::uint32_t capacity : 30;
    std::uint32_t holdsProperties : 1;
    std::uint32_t hasOlder : 1; ///< the older block's address stands in front of the entries

    /// Of the older block's address, which keeps what stands behind it aligned.
    static constexpr std::size_t OlderSize = 8;

    /// `older`, the word of a block or a shaped one, or 0, is freed with the new block.
    /// Throws std::bad_alloc, and then `older` is as it was.
    static EntryBlock* Make(std::size_t capacity, std::size_t bytes, std::uintptr_t older);
    /// Frees a block without entries, given by its word, and those before it.
    static void FreeChain(std::uintptr_t word) noexcept;

    /// Whether something was placed here or in an older block, so that this one can't be freed alone.
    bool MustStay() const noexcept { return holdsProperties != 0 || hasOlder != 0; }

    /// The places; those from end() on hold nothing yet.
    Entry* begin() noexcept {
        auto* behind = reinterpret_cast<std::byte*>(this + 1);
        return reinterpret_cast<Entry*>(behind + (hasOlder != 0 ? OlderSize : 0));
    }
    Entry* end() noexcept { return begin() + size; }
    /// Behind all places, also those that aren't in use.
    std::byte* Room() noexcept { return reinterpret_cast<std::byte*>(begin() + capacity); }

    /// Adds an entry behind those that aren't greater. There must be a place left.
    /// Entries of one name so stay in the order of insertion. Moves entries, so places are lost; properties
    /// stay. `before`, where it isn't null, isn't greater than `name`.
    void Insert(EntryName name, PropertyHandle property, EntryName const* before = nullptr) noexcept;
    /// Takes an entry out and gives its property, which the caller ends.
    /// The order of the others stays; places behind it are lost.
    PropertyHandle Take(Entry* at) noexcept;

private:
    /// 0 where nothing had to stay.
    std::uintptr_t Older() const noexcept {
        return hasOlder != 0 ? *reinterpret_cast<std::uintptr_t const*>(this + 1) : 0;
    }
};

static_assert(sizeof(EntryBlock) == 8 && alignof(EntryBlock) <= 8);

} // namespace Zantrel
