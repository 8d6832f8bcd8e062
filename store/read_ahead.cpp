// SPDX-License-Identifier: Apache-2.0
#include "store/read_ahead.h"

#include "store/bag_access.h"

namespace Zantrel {

namespace {

/// Null for a form whose entries lie side by side.
Entry const* LooseEntry(std::uintptr_t word, EntryPlace place) noexcept {
    return VisitForm(
        word, ByForm{[place](TreeForm) -> Entry const* { return static_cast<TreeEntry const*>(place); },
                     [place](BlockForm) { return static_cast<Entry const*>(place); },
                     [](auto) -> Entry const* { return nullptr; }});
}

} // namespace

ReadAhead::ReadAhead(PersistentProperties const& bag) noexcept
    : m_word(BagInside::Word(bag)), m_entry(BagInside::Reader(bag).First()) {
    // The walk that follows is slower than the announcements, so a constant lead is enough.
    for (int step = 0; step < Lead; ++step) {
        Step();
    }
}

void ReadAhead::Step() noexcept {
    if (auto const* const bag = PropertyCast<PersistentProperties>(m_property)) {
        BagAccess::Announce(bag->m_value, BlockBytes);
    }
    // A property's class can be asked for only when the property is near: one step asks for it, the next
    // looks at it.
    m_property = nullptr;
    if (Entry const* const entry = m_entry != nullptr ? LooseEntry(m_word, m_entry) : nullptr) {
        m_property = entry->property.Get();
        Prefetch(m_property);
        entry->name.Announce();
        m_entry = EntryReader(m_word).Next(m_entry);
        Prefetch(m_entry);
    }
}

} // namespace Zantrel
