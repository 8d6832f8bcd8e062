// SPDX-License-Identifier: Apache-2.0
#include "store/bag_shape.h"

#include "store/record_room.h"
#include "store/shaped_block.h"
#include "text/same_text.h"

#include <zantrel/store/persistent_properties.h>

#include <algorithm>
#include <numeric>
#include <utility>

namespace Zantrel {

namespace {

// A leaf's value follows its bag, so that one look at memory brings both.
std::uint32_t BytesOf(BagShape::Slot const& slot) {
    if (slot.flagBit != 0) {
        return RecordRoom::SizeOf<PersistentProperty<bool>>();
    }
    return std::visit(
        []<class T>(T const&) -> std::uint32_t {
            std::size_t const bag = RecordRoom::SizeOf<PersistentProperty<PersistentProperties>>();
            if constexpr (std::is_same_v<T, std::monostate>) {
                return static_cast<std::uint32_t>(bag);
            } else {
                return static_cast<std::uint32_t>(bag + RecordRoom::SizeOf<PersistentProperty<T>>());
            }
        },
        slot.model);
}

// Names that the index doesn't have are sought one by one only up to here: in a wide bag each miss would walk
// past all of them.
constexpr std::size_t FewEntries = 32;

} // namespace

void BagShape::AddBag(std::wstring const& name, Model model) {
    m_names.push_back(EntryName::Borrow(name));
    m_slots.push_back({0, 0, std::move(model)});
}

void BagShape::AddFlag(std::wstring const& name) {
    std::uint32_t const bit = m_flagBits + 1; // the lowest that is free
    m_names.push_back(EntryName::Borrow(name));
    m_slots.push_back({0, bit, {}});
    m_flagBits |= bit;
}

std::vector<std::uint32_t> BagShape::Complete() {
    // Stable, since a look-up by name finds the first of several alike, as in every other form of bag.
    std::vector<std::uint32_t> order(Size()), slots(Size());
    std::iota(order.begin(), order.end(), 0u);
    std::stable_sort(order.begin(), order.end(), [this](std::uint32_t left, std::uint32_t right) {
        return EntryNameLess()(m_names[left].View(), m_names[right].View());
    });
    // In the order of adding, which is that in which entries are read and written.
    m_bytes = sizeof(ShapedBlock);
    for (Slot& slot : m_slots) {
        slot.place = static_cast<std::uint32_t>(m_bytes);
        m_bytes += BytesOf(slot);
    }
    std::vector<EntryName> names;
    std::vector<Slot> ordered;
    for (std::uint32_t const added : order) {
        slots[added] = static_cast<std::uint32_t>(ordered.size());
        names.push_back(m_names[added]);
        ordered.push_back(std::move(m_slots[added]));
    }
    m_names = std::move(names);
    m_slots = std::move(ordered);

    // At most half full, so that nearly every look-up ends at its first or second place. Of several entries
    // of one name only the first is in the index.
    std::size_t capacity = 4;
    while (capacity < 2 * Size()) {
        capacity *= 2;
    }
    m_index.assign(capacity, 0);
    for (std::size_t slot = 0; slot < Size(); ++slot) {
        if (FindFixed(m_names[slot].View()) == Size()) {
            std::size_t at = HashOf(m_names[slot].View()) & (capacity - 1);
            while (m_index[at] != 0) {
                at = (at + 1) & (capacity - 1);
            }
            m_index[at] = static_cast<std::uint32_t>(slot + 1);
            if (m_slots[slot].flagBit != 0) {
                m_flagSlots.push_back(slot);
            }
        }
    }
    return slots;
}

/// A few characters: names of one node rarely have all of them alike, and those that do are told apart by
/// their text.
std::size_t BagShape::HashOf(std::wstring_view name) noexcept {
    std::size_t hash = name.size();
    if (!name.empty()) {
        for (std::size_t const at : {std::size_t(0), name.size() / 2, name.size() * 3 / 4, name.size() - 1}) {
            hash = hash * 0x9E3779B1u + static_cast<std::size_t>(name[at]);
        }
    }
    return hash ^ (hash >> 15) ^ (hash >> 7);
}

std::size_t BagShape::FindFixed(std::wstring_view name) const noexcept {
    std::size_t const mask = m_index.size() - 1;
    for (std::size_t at = HashOf(name) & mask; m_index[at] != 0; at = (at + 1) & mask) {
        if (Text::IsSame(m_names[m_index[at] - 1].View(), name)) {
            return m_index[at] - 1;
        }
    }
    return Size();
}

std::size_t BagShape::Find(std::wstring_view name) const noexcept {
    std::size_t const slot = FindFixed(name);
    if (slot != Size() || Size() > FewEntries) {
        return slot;
    }
    auto const at = std::find_if(m_names.begin(), m_names.end(),
                                 [name](EntryName const& own) { return own.View() == name; });
    return static_cast<std::size_t>(at - m_names.begin());
}

std::size_t BagShape::FindBorrowed(std::wstring const& name) const noexcept {
    std::size_t const slot = FindFixed(name);
    if (slot != Size()) {
        return slot;
    }
    auto const at = std::find_if(m_names.begin(), m_names.end(),
                                 [&name](EntryName const& own) { return own.Borrows(name); });
    return static_cast<std::size_t>(at - m_names.begin());
}

} // namespace Zantrel
