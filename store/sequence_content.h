// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/store/persistent_properties.h>

#include <cstddef>
#include <cstdint>

namespace Zantrel {

/// What a sequence that isn't empty owns: bags in pieces that are never moved, so that references to bags
/// stay good while the sequence grows. Behind the members stands a table of the pieces, which is what grows.
class SequenceContent {
public:
    SequenceContent(SequenceContent const&) = delete;
    SequenceContent& operator=(SequenceContent const&) = delete;

    /// Appends an empty bag. `content` is null for an empty sequence, and may be another one afterwards.
    /// Throws std::bad_alloc, and nothing has changed then.
    static PersistentProperties& Append(SequenceContent*& content);
    /// Frees the content and the bags' own memory; their entries have been taken or end one by one.
    static void Free(SequenceContent* content) noexcept;

    /// How many bags there are.
    std::size_t Size() const noexcept { return m_size; }
    /// There must be such a bag. Takes the same time for each.
    PersistentProperties& At(std::size_t index) noexcept;
    /// Lets go of the last bag, which the caller empties.
    PersistentProperties& TakeLast() noexcept { return At(--m_size); }

    std::uintptr_t m_pending = 0; ///< while this sequence ends: see ending.cpp

private:
    /// Only by Make, which knows how much memory that takes.
    explicit SequenceContent(std::uint32_t capacity) noexcept : m_capacity(capacity) {}
    /// Without pieces, but with room for so many in the table.
    static SequenceContent* Make(std::uint32_t capacity);
    /// The table behind the members.
    PersistentProperties** Pieces() noexcept { return reinterpret_cast<PersistentProperties**>(this + 1); }

    std::size_t m_size = 0;
    /// How many pieces the table names.
    std::uint32_t m_pieces = 0;
    std::uint32_t m_capacity; ///< for how many pieces there is room in the table
};

} // namespace Zantrel
