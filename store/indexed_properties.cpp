// SPDX-License-Identifier: Apache-2.0
#include <zantrel/store/indexed_properties.h>

#include "store/name_copier.h"

#include <algorithm>
#include <bit>
#include <stdexcept>
#include <utility>

template class PersistentProperty<IndexedProperties<PersistentProperties>>;

namespace {

// Piece 0 holds bags 0 and 1, piece k from 1 to 8 the bags from 2^k to 2^(k+1) - 1, every further piece 256:
// a short list stays small, and a long one wastes little.
constexpr std::size_t LastDoubled = 8;
constexpr std::size_t LargePiece = std::size_t(1) << LastDoubled;

std::size_t PieceSize(std::size_t piece) {
    return piece == 0 ? 2 : std::size_t(1) << std::min(piece, LastDoubled);
}

struct Place {
    std::size_t piece;
    std::size_t offset;
};

Place PlaceOf(std::size_t index) {
    if (index < 2) {
        return {0, index};
    }
    if (index < 2 * LargePiece) {
        std::size_t const piece = static_cast<std::size_t>(std::bit_width(index)) - 1;
        return {piece, index - (std::size_t(1) << piece)};
    }
    std::size_t const behind = index - 2 * LargePiece;
    return {LastDoubled + 1 + behind / LargePiece, behind % LargePiece};
}

} // namespace

using Sequence = IndexedProperties<PersistentProperties>;

Sequence::IndexedProperties(Sequence const& other) : IMergeablePropertyValue(other) {
    Zantrel::NameCopier names(Zantrel::NameCopier::Borrowed::Own);
    _CopyFrom(other, names);
}

Sequence& Sequence::operator=(Sequence const& other) {
    if (this != &other) {
        Sequence copy(other);
        Swap(copy);
    }
    return *this;
}

Sequence::~IndexedProperties() = default;

bool Sequence::operator==(Sequence const& other) const {
    if (m_size != other.m_size) {
        return false;
    }
    for (std::size_t i = 0; i < m_size; ++i) {
        if (At(i) != other.At(i)) {
            return false;
        }
    }
    return true;
}

void Sequence::Merge(IMergeablePropertyValue const& other, bool overwrite) {
    auto const* source = dynamic_cast<Sequence const*>(&other);
    if (source != nullptr && (overwrite || m_size == 0)) {
        *this = *source;
    }
}

PersistentProperties& Sequence::AddProperty() {
    if (PlaceOf(m_size).piece == m_pieces.size()) {
        m_pieces.push_back(std::make_unique<PersistentProperties[]>(PieceSize(m_pieces.size())));
    }
    return At(m_size++);
}

PersistentProperties& Sequence::At(std::size_t index) const {
    Place const place = PlaceOf(index);
    return m_pieces[place.piece][place.offset];
}

PersistentProperties const& Sequence::GetProperty(std::int32_t index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= m_size) {
        throw std::out_of_range("no such bag in the sequence");
    }
    return At(static_cast<std::size_t>(index));
}

PersistentProperties& Sequence::GetProperty(std::int32_t index) {
    return const_cast<PersistentProperties&>(std::as_const(*this).GetProperty(index));
}

void Sequence::Clear() noexcept {
    m_size = 0;
    m_pieces.clear();
}

void Sequence::Swap(Sequence& other) noexcept {
    std::swap(m_size, other.m_size);
    m_pieces.swap(other.m_pieces);
}

void Sequence::_CopyFrom(Sequence const& source, Zantrel::NameCopier& names) {
    Sequence copy;
    for (std::size_t i = 0; i < source.m_size; ++i) {
        copy.AddProperty()._Entries().CopyFrom(source.At(i)._Entries(), names);
    }
    Swap(copy);
}
