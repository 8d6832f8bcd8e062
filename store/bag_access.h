// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/bag_inside.h"
#include "store/name_copier.h"
#include "store/prefetch.h"
#include "store/shared_names.h"

#include <zantrel/store/external_properties.h>
#include <zantrel/store/persistent_properties.h>

#include <cstddef>
#include <cstdint>
#include <string>

/// What other floors do with bags beyond the public operations. Nothing else of how a bag is kept leaves the
/// store, so that it can be exchanged without their noticing.
namespace Zantrel::BagAccess {

/// As PersistentProperties::FindProperty, but quicker where the entry's name is this very text: the name of
/// the layout's node that the bag was formatted from, or one of Reserved().
IPersistentProperty* Find(PersistentProperties const& bag, std::wstring const& name) noexcept;
/// The flag under the first entry of `name`, one of Reserved(); null where that is missing or no flag. Quick
/// for a bag of a shape.
PersistentProperty<bool> const* FindFlag(PersistentProperties const& bag, std::wstring const& name) noexcept;
/// The property of a bag that holds "Value" alone, as nearly every leaf does; otherwise null, and also for
/// some bags that do.
IPersistentProperty* FindSole(PersistentProperties const& bag) noexcept;

/// Whether all entries are bags, as where a place has no flag. Quick for a bag of a shape.
bool HoldsBagsOnly(PersistentProperties const& bag) noexcept;

/// Ends each entry for which `drops` is true. When `drops` throws, the entries already judged are gone.
void RemoveWhere(PersistentProperties& bag, EntryJudge const& drops);
/// Exchanges the entries of two bags of one tree, or of a bag and a new one that goes to its tree.
void Swap(PersistentProperties& left, PersistentProperties& right) noexcept;

/// Assigns a bag of a database to one of the same database, or of a copy of it on the same layout: names go
/// on naming the layout's nodes. `source` may lie within `target`.
void AssignWithinLayout(PersistentProperties& target, PersistentProperties const& source);
/// Assigns as the operator does, with names that all assignments by the same copier share.
void Assign(KelAM::ExternalProperties& target, KelAM::ExternalProperties const& source, NameCopier& names);

/// Sets a flag, a bool of this reserved name. Throws std::bad_alloc.
void SetFlag(PersistentProperties& bag, std::wstring const& name, bool value);

// Bags of a shape. Slots are those of BagShape::Complete.

/// Fills an empty bag with the entries of a shape, each with its model. The shape must outlive the bag and
/// all bags that take its entries over within the tree. On std::bad_alloc the bag stays empty.
void Format(PersistentProperties& bag, BagShape const& shape);
/// The shape whose entries the bag has; null where it has others.
inline BagShape const* ShapeOf(PersistentProperties const& bag) noexcept {
    ShapedBlock const* const block = BagInside::Shaped(bag);
    return block != nullptr ? block->shape : nullptr;
}
/// Of a bag that has a shape, the bag in a slot that isn't a flag's.
inline PersistentProperty<PersistentProperties>& BagAt(PersistentProperties& bag, std::size_t slot) noexcept {
    return BagInside::Shaped(bag)->BagAt(slot);
}
/// The value that was formatted with that bag, where it holds this one and nothing else; otherwise null, and
/// so where the bag or the value is marked deleted, or `bag` has not the entries of `shape` any more.
IPersistentProperty* PlainValueAt(PersistentProperties const& bag, BagShape const& shape,
                                  std::size_t slot) noexcept;
/// The same where the slot's model is a T.
template <class T>
T* PlainValueAt(PersistentProperties const& bag, BagShape const& shape, std::size_t slot) noexcept {
    ShapedBlock const* const block = BagInside::Shaped(bag);
    if (block == nullptr || block->shape != &shape || block->BagAt(slot).m_deleted) {
        return nullptr;
    }
    auto* const value = static_cast<PersistentProperty<T>*>(block->PlainValueAt(slot));
    return value != nullptr && !value->m_deleted ? &value->m_value : nullptr;
}

// The same by place, for who goes through many bags of one shape and keeps what it says of each slot.

/// The block of a bag that has a shape; null where it has other entries.
inline ShapedBlock const* BlockOf(PersistentProperties const& bag) noexcept { return BagInside::Shaped(bag); }
/// The bag of a slot that isn't a flag's, by the slot's place. It may be marked deleted.
inline PersistentProperty<PersistentProperties> const& BagIn(ShapedBlock const& block,
                                                             std::uint32_t place) noexcept {
    auto const* const at = reinterpret_cast<std::byte const*>(&block) + place;
    return *reinterpret_cast<PersistentProperty<PersistentProperties> const*>(at);
}
/// The value that was formatted with such a bag, where it holds this one and nothing else; otherwise null.
/// The value may be marked deleted.
inline IPersistentProperty const* PlainValueOf(PersistentProperty<PersistentProperties> const& bag) noexcept {
    return BagInside::PlainValueOf(bag);
}

/// Says that the entries of a bag are soon read, which then wait less for memory. Nothing is looked at now.
/// `bytes` are those of its block, of which the first ones do; the rest comes in order.
inline void Announce(PersistentProperties const& bag, std::size_t bytes) noexcept {
    constexpr std::uintptr_t FormBits = 7;
    constexpr std::size_t LineSize = 64, MostBytes = 8 * LineSize;
    std::uintptr_t const entries = BagInside::Word(bag) & ~FormBits;
    for (std::size_t at = 0; at < bytes && at < MostBytes; at += LineSize) {
        Prefetch(reinterpret_cast<void const*>(entries + at));
    }
}
/// The same for the text in a bag that PlainValueOf finds one in, and whose block is there.
inline void AnnounceText(PersistentProperty<PersistentProperties> const& bag) noexcept {
    if (IPersistentProperty const* const value = BagInside::PlainValueOf(bag)) {
        Prefetch(static_cast<PersistentProperty<std::wstring> const*>(value)->m_value.data());
    }
}

// Formatting without a shape. A bag is built in one allocation: Reserve its room, then add properties by
// Emplace, which takes the heap where the room is used up; the values of leaves may be placed in the room of
// the bag around them.

/// The name of the entry `name` in `bag`, to be shared by a bag of the same tree; otherwise a copy of its
/// own, one for all that ask `names`.
EntryName NameFrom(PersistentProperties const* bag, std::wstring const& name, NameCopier& names);

/// On std::bad_alloc the bag is as it was.
inline RecordRoom Reserve(PersistentProperties& bag, std::size_t count, std::size_t bytes) {
    return BagInside::Table(bag).Reserve(count, bytes);
}
template <class T, class... Arguments>
T& Emplace(PersistentProperties& bag, EntryName name, RecordRoom& room, Arguments const&... arguments) {
    return BagInside::Table(bag).Emplace<T>(std::move(name), room, arguments...);
}

} // namespace Zantrel::BagAccess
