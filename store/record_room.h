// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <utility>

namespace Zantrel {

/// Memory for properties inside the block of a bag, given out from front to back. A bag made in one go, from
/// a layout or from another bag, so takes one allocation with all its leaves and their values. The memory
/// goes with the bag's block.
class RecordRoom {
public:
    /// No room: everything goes to the heap.
    RecordRoom() = default;
    /// Both aligned, as the room of a block is.
    RecordRoom(std::byte* begin, std::byte* end) : m_next(begin), m_end(end) {}

    /// Null when there isn't so much left.
    void* Take(std::size_t bytes) noexcept {
        if (static_cast<std::size_t>(m_end - m_next) < bytes) {
            return nullptr;
        }
        return std::exchange(m_next, m_next + bytes);
    }

    /// What one property of class T takes of the room.
    template <class T> static constexpr std::size_t SizeOf() {
        static_assert(alignof(T) <= Alignment);
        return (sizeof(T) + Alignment - 1) / Alignment * Alignment;
    }

    /// Of every property that is placed: they begin with a pointer and hold numbers at most. And a table
    /// tells its forms by the three low bits of their addresses, where pointers have four bytes, too.
    static constexpr std::size_t Alignment = 8;

private:
    std::byte* m_next = nullptr;
    std::byte* m_end = nullptr;
};

} // namespace Zantrel
