// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/entry_forms.h"

#include <zantrel/store/persistent_properties.h>

#include <cstddef>
#include <cstdint>

namespace Zantrel {

/// Says ahead of who goes through the bags in a bag, one by one in their order, what he will come to, so that
/// he waits less for memory: the entries of a long profile list and what hangs on them lie anywhere.
///
/// Three steps stand between an entry and what is in its bag, and each is known only when the one before has
/// come. So they are taken for different entries at a time: a bag's block is announced when its property has
/// arrived, which was announced when its entry had.
class ReadAhead {
public:
    ReadAhead() = default;
    /// Good while no entry is added to the bag or removed. The first entries are announced at once.
    explicit ReadAhead(PersistentProperties const& bag) noexcept;

    /// To be called for each entry. Announces what comes two entries on, and in part what comes after that.
    void Step() noexcept;

private:
    static constexpr int Lead = 3;
    static constexpr std::size_t BlockBytes = 512; ///< as many as a profile may well have

    std::uintptr_t m_word = 0;
    EntryPlace m_entry = nullptr; ///< that has been announced
    IPersistentProperty const* m_property = nullptr;
};

} // namespace Zantrel
