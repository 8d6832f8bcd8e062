// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/bag_shape.h"
#include "store/record_room.h"

#include <zantrel/store/persistent_properties.h>

#include <bit>
#include <cstddef>
#include <cstdint>

namespace Zantrel {

/// The entries of a bag that has a shape: a header, then the properties at the places that the shape names.
/// The first `made` slots have theirs; all have them but while a block is made or ends, which go through the
/// slots in order and back. Entries that the shape doesn't know, and a removed one, can't be: for these a
/// table takes the entries over, and the block lives on behind it without any (EntryTable).
struct alignas(RecordRoom::Alignment) ShapedBlock {
    using Bag = PersistentProperty<PersistentProperties>;

    /// Of a leaf's value from the leaf's bag on.
    static constexpr std::size_t ValueOffset = RecordRoom::SizeOf<Bag>();

    BagShape const* shape;
    std::uint32_t flags = 0; ///< the bits of those that are there
    std::uint32_t made = 0;

    /// With the shape's models. Throws std::bad_alloc.
    static ShapedBlock* Make(BagShape const& shape);
    /// Where no slot has its property, as while a copy is made. Throws std::bad_alloc.
    static ShapedBlock* MakeEmpty(BagShape const& shape);
    /// Requires that all properties have ended, or belong to nobody any more.
    static void Free(ShapedBlock* block) noexcept;

    bool Has(std::size_t slot) const noexcept {
        std::uint32_t const bit = shape->At(slot).flagBit;
        return slot < made && (bit & ~flags) == 0;
    }
    /// Of a whole block.
    std::size_t CountAbsent() const noexcept {
        return static_cast<std::size_t>(std::popcount(shape->FlagBits() & ~flags));
    }
    /// The property of a slot that has one.
    IPersistentProperty* At(std::size_t slot) const noexcept {
        return static_cast<IPersistentProperty*>(
            shape->At(slot).flagBit != 0 ? static_cast<IPersistentProperty*>(&FlagAt(slot)) : &BagAt(slot));
    }
    Bag& BagAt(std::size_t slot) const noexcept { return *static_cast<Bag*>(PlaceOf(slot)); }
    PersistentProperty<bool>& FlagAt(std::size_t slot) const noexcept {
        return *static_cast<PersistentProperty<bool>*>(PlaceOf(slot));
    }
    /// The value of a leaf, where its bag holds what was placed with it and nothing else; otherwise null.
    inline IPersistentProperty* PlainValueAt(std::size_t slot) const noexcept;

    /// Gives the next slot, which this is, a bag, and its value where the slot has one.
    void AddBag(BagShape::Slot const& slot);
    /// The same for a slot that has the value of a plain one, which becomes a copy of that; null: no value.
    Bag& AddCopy(Bag const& source, IPersistentProperty const* value);
    /// Passes over the next slot, a flag's.
    void PassFlag() noexcept { ++made; }
    /// Of an absent flag.
    void SetFlag(std::size_t slot, bool value) noexcept {
        ::new (PlaceOf(slot)) PersistentProperty<bool>(value);
        flags |= shape->At(slot).flagBit;
    }
    /// Of one that is there.
    void EndFlag(std::size_t slot) noexcept {
        FlagAt(slot).~PersistentProperty<bool>();
        flags &= ~shape->At(slot).flagBit;
    }

    /// All that is placed begins with a property, which so has the place's address.
    void* PlaceOf(std::size_t slot) const noexcept {
        return reinterpret_cast<std::byte*>(const_cast<ShapedBlock*>(this)) + shape->At(slot).place;
    }

    /// Right behind its bag.
    void* ValuePlaceOf(std::size_t slot) const noexcept {
        return static_cast<std::byte*>(PlaceOf(slot)) + ValueOffset;
    }
};

} // namespace Zantrel
