// SPDX-License-Identifier: Apache-2.0
#include <zantrel/store/indexed_properties.h>

#include "store/bag_inside.h"
#include "store/comparing.h"
#include "store/copying.h"
#include "store/ending.h"
#include "store/renaming.h"

#include <stdexcept>
#include <utility>

template class PersistentProperty<IndexedProperties<PersistentProperties>>;

// The bags themselves stand in a SequenceContent, which is made with the first of them.

using namespace Zantrel;
using Sequence = IndexedProperties<PersistentProperties>;

Sequence::IndexedProperties(Sequence const& other) : IMergeablePropertyValue(other) { *this = other; }

Sequence& Sequence::operator=(Sequence const& other) {
    if (this != &other) {
        NameCopier names(NameCopier::Borrowed::Own);
        Sequence copy;
        CopyBags(copy, other, names);
        BagInside::Swap(*this, copy); // what stood here goes last: `other` may lie within it
    }
    return *this;
}

Sequence::~IndexedProperties() { EndSequence(m_content); }

bool Sequence::operator==(Sequence const& other) const { return AreEqual(*this, other); }

void Sequence::Merge(IMergeablePropertyValue const& other, bool overwrite) {
    auto const* source = dynamic_cast<Sequence const*>(&other);
    if (source != nullptr && (overwrite || m_content == nullptr)) {
        *this = *source;
    }
}

PersistentProperties& Sequence::AddProperty() { return SequenceContent::Append(m_content); }

PersistentProperties const& Sequence::GetProperty(std::int32_t index) const {
    if (index < 0 || static_cast<unsigned long long>(index) >= GetNumProperties()) {
        throw std::out_of_range("no such bag in the sequence");
    }
    return m_content->At(static_cast<std::size_t>(index));
}

PersistentProperties& Sequence::GetProperty(std::int32_t index) {
    return const_cast<PersistentProperties&>(std::as_const(*this).GetProperty(index));
}

unsigned long long Sequence::GetNumProperties() const noexcept {
    return m_content != nullptr ? m_content->Size() : 0;
}

// Contents pass from neighbour to neighbour and the bags stay where they are, since hosts refer to them.
void Sequence::MoveProperty(std::int32_t from, std::int32_t to) {
    static_cast<void>(GetProperty(from)); // both are there, or nothing is moved
    static_cast<void>(GetProperty(to));
    for (std::int32_t const step = from < to ? 1 : -1; from != to; from += step) {
        BagInside::Swap(GetProperty(from), GetProperty(from + step));
    }
}

// What goes is moved to the end first, the one place where a bag can go and no other moves.
void Sequence::RemoveProperty(std::int32_t index) {
    MoveProperty(index, static_cast<std::int32_t>(GetNumProperties()) - 1);
    EndEntries(BagInside::TakeWord(m_content->TakeLast()));
    if (m_content->Size() == 0) {
        Clear(); // an empty sequence has no content
    }
}

void Sequence::Clear() noexcept { EndSequence(std::exchange(m_content, nullptr)); }

void Sequence::Swap(Sequence& other) {
    if (this != &other) {
        // Each may belong to a database, whose names go with its layout, and to a thread of its own.
        bool const hasOther = OwnNames(*this, other);
        bool const isWithinOther = OwnNames(other, *this);
        if (!hasOther && !isWithinOther) {
            BagInside::Swap(*this, other);
        }
    }
}
