// SPDX-License-Identifier: Apache-2.0
#include "store/sequence_content.h"

#include <algorithm>
#include <bit>
#include <memory>
#include <new>

namespace Zantrel {

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

/// Without a search, from the highest bit of the index or by a division, so that any bag is reached
/// alike.
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

/// The content with room for its table behind it.
SequenceContent* SequenceContent::Make(std::uint32_t capacity) {
    return ::new (::operator new(sizeof(SequenceContent) + capacity * sizeof(PersistentProperties*)))
        SequenceContent(capacity);
}

void SequenceContent::Free(SequenceContent* content) noexcept {
    std::for_each_n(content->Pieces(), content->m_pieces, std::default_delete<PersistentProperties[]>());
    ::operator delete(content);
}

PersistentProperties& SequenceContent::At(std::size_t index) noexcept {
    Place const place = PlaceOf(index);
    return Pieces()[place.piece][place.offset];
}

PersistentProperties& SequenceContent::Append(SequenceContent*& content) {
    // Only at the border of a piece is there something to make: the piece, and where the table is full a
    // larger one, to which the pieces move by their addresses.
    std::size_t const size = content != nullptr ? content->m_size : 0;
    std::uint32_t const pieces = content != nullptr ? content->m_pieces : 0;
    if (PlaceOf(size).piece == pieces) {
        auto piece = std::make_unique<PersistentProperties[]>(PieceSize(pieces));
        if (content == nullptr || pieces == content->m_capacity) {
            SequenceContent* const larger = Make(std::max(2 * pieces, std::uint32_t(1)));
            if (content != nullptr) {
                std::copy_n(content->Pieces(), pieces, larger->Pieces());
                larger->m_size = size;
                larger->m_pieces = pieces;
                ::operator delete(content);
            }
            content = larger;
        }
        content->Pieces()[content->m_pieces++] = piece.release();
    }
    return content->At(content->m_size++);
}

} // namespace Zantrel
