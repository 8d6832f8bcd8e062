// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/entry_name.h"

#include <zantrel/store/file_content.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Zantrel {

/// What the bags of one kind have in common: which entries they have, in the order of names, and where in a
/// bag's one block (ShapedBlock) each of them stands. Bags that are formatted from one node of a layout have
/// one shape, so that an entry costs neither a name nor a word for its place.
///
/// An entry is a bag, as of a child of the node, or a flag. A leaf's bag has its value right behind it. A
/// flag's place is kept for it in each block, and a bit of the block says whether it is there.
///
/// Built once by Add and Complete, then only read, also by several threads. Outlives every bag of this shape.
class BagShape {
public:
    /// What a new bag holds under "Value"; nothing, where that is not for its block to say.
    using Model = std::variant<std::monostate, std::int32_t, double, bool, std::wstring, KelAM::FileContent>;

    struct Slot {
        std::uint32_t place = 0;   ///< of the entry's property, in bytes from the beginning of the block
        std::uint32_t flagBit = 0; ///< of a flag, in the block's mask; 0: a bag, which every block has
        Model model{};
    };

    BagShape() = default;
    BagShape(BagShape const&) = delete;
    BagShape& operator=(BagShape const&) = delete;

    /// One more entry, whose text `name` borrows. Those of one name keep the order in which they are added.
    void AddBag(std::wstring const& name, Model model);
    void AddFlag(std::wstring const& name);
    /// Puts the entries in order and gives them places. Nothing is added afterwards. Gives for each entry, in
    /// the order of adding, its slot.
    std::vector<std::uint32_t> Complete();

    std::size_t Size() const noexcept { return m_slots.size(); }
    Slot const& At(std::size_t slot) const noexcept { return m_slots[slot]; }
    std::vector<Slot> const& Slots() const noexcept { return m_slots; }
    EntryName const& NameAt(std::size_t slot) const noexcept { return m_names[slot]; }
    EntryName const* Names() const noexcept { return m_names.data(); }
    std::uint32_t FlagBits() const noexcept { return m_flagBits; } ///< of all flags
    /// Of the flags that a look-up by name finds: no bag has the name of one.
    std::vector<std::size_t> const& FlagSlots() const noexcept { return m_flagSlots; }
    /// How long a block is.
    std::size_t Bytes() const noexcept { return m_bytes; }

    /// The first slot of this name, or Size(). A name that its owner has changed since is found in a bag of
    /// few entries.
    std::size_t Find(std::wstring_view name) const noexcept;
    /// The same for a name that nobody can have changed.
    std::size_t FindFixed(std::wstring_view name) const noexcept;
    /// The same for a text that an entry may have borrowed, which is so found also when it has changed since.
    std::size_t FindBorrowed(std::wstring const& name) const noexcept;

private:
    static std::size_t HashOf(std::wstring_view name) noexcept;

    std::vector<EntryName> m_names; ///< beside m_slots
    std::vector<Slot> m_slots;
    std::vector<std::uint32_t> m_index; ///< by hash: slot + 1 of each name's first entry; 0: none
    std::uint32_t m_flagBits = 0;
    std::vector<std::size_t> m_flagSlots;
    std::size_t m_bytes = 0;
};

} // namespace Zantrel
