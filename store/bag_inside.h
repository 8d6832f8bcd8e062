// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/entry_table.h"
#include "store/sequence_content.h"

#include <zantrel/store/indexed_properties.h>
#include <zantrel/store/persistent_properties.h>

#include <cstddef>
#include <cstdint>
#include <utility>

namespace Zantrel {

/// The words that bags and sequences keep to themselves, for the sources of the store.
/// The only friend of both, so that what is done with their words is found here.
struct BagInside {
    /// For changing, and for reading; good while the bag is.
    static EntryTable Table(PersistentProperties& bag) noexcept { return EntryTable(bag.m_entries); }
    static EntryReader Reader(PersistentProperties const& bag) noexcept { return EntryReader(bag.m_entries); }
    static std::uintptr_t Word(PersistentProperties const& bag) noexcept { return bag.m_entries; }
    /// Null where the entries aren't those of a shape.
    static ShapedBlock* Shaped(PersistentProperties const& bag) noexcept {
        return VisitForm(bag.m_entries, ByForm{[](ShapedForm form) { return form.block; },
                                               [](auto) -> ShapedBlock* { return nullptr; }});
    }
    /// Whether going through all entries is as quick as a look-up.
    static bool IsFew(PersistentProperties const& bag) noexcept {
        return VisitForm(bag.m_entries, ByForm{[](TreeForm) { return false; }, [](auto) { return true; }});
    }
    /// The value that was placed behind a bag in its block, where the bag holds this one and nothing else;
    /// otherwise null.
    static IPersistentProperty* PlainValueOf(ShapedBlock::Bag const& bag) noexcept {
        auto* const behind = reinterpret_cast<std::byte*>(const_cast<ShapedBlock::Bag*>(&bag));
        auto* const value = reinterpret_cast<IPersistentProperty*>(behind + ShapedBlock::ValueOffset);
        bool const isPlain = Word(bag.m_value) == WordOf(SingleForm{PropertyHandle::Placed(value)});
        return isPlain ? value : nullptr;
    }
    /// Of an empty bag, which owns what the word stands for from then on.
    static void SetWord(PersistentProperties& bag, std::uintptr_t word) noexcept { bag.m_entries = word; }
    /// Leaves the bag empty; whoever takes the word ends what it stands for.
    static std::uintptr_t TakeWord(PersistentProperties& bag) noexcept {
        return std::exchange(bag.m_entries, 0u);
    }
    /// Without care for names: both belong to one tree, or one of them is empty.
    static void Swap(PersistentProperties& left, PersistentProperties& right) noexcept {
        std::swap(left.m_entries, right.m_entries);
    }
    /// `place` is one of this bag, or null for its end.
    static PersistentProperties::Iterator IteratorAt(PersistentProperties const& bag, EntryPlace place) {
        return {bag.m_entries, place};
    }

    using Sequence = IndexedProperties<PersistentProperties>;
    /// Leaves the sequence empty; whoever takes the content ends it.
    static SequenceContent* TakeContent(Sequence& sequence) noexcept {
        return std::exchange(sequence.m_content, nullptr);
    }
    /// Without care for names: both belong to one tree, or one of them is empty.
    /// The bags themselves don't move.
    static void Swap(Sequence& left, Sequence& right) noexcept { std::swap(left.m_content, right.m_content); }
    /// There must be such a bag.
    static PersistentProperties& At(Sequence const& sequence, std::size_t index) noexcept {
        return sequence.m_content->At(index);
    }
};

// Here, behind the words of bags, and inline, as readers and writers ask for each leaf.
inline IPersistentProperty* ShapedBlock::PlainValueAt(std::size_t slot) const noexcept {
    return BagInside::PlainValueOf(BagAt(slot));
}

} // namespace Zantrel
