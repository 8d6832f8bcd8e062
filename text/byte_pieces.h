// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace Zantrel::Text {

/// Bytes that come one after the other, nobody knows how many, until they become one vector. A vector that
/// grew with them would at last stand beside a copy of half its size or more; here pieces stand beside the
/// vector, of which each ends as soon as it is copied. A piece is so large that the system's own allocators
/// give its memory back at once.
class BytePieces {
public:
    static constexpr std::size_t PieceSize = std::size_t(32) * 1024 * 1024;

    /// Takes them all or, when it throws, some of them.
    void Append(std::span<std::byte const> bytes) {
        while (!bytes.empty()) {
            if (m_pieces.empty() || m_pieces.back().size() == PieceSize) {
                m_pieces.emplace_back();
            }
            std::vector<std::byte>& last = m_pieces.back();
            if (m_pieces.size() != 1 || last.size() > Small) {
                last.reserve(PieceSize);
            }
            auto const taken = bytes.first(std::min(bytes.size(), PieceSize - last.size()));
            last.insert(last.end(), taken.begin(), taken.end());
            bytes = bytes.subspan(taken.size());
        }
    }

    /// Gives all of them, and has none from then on.
    std::vector<std::byte> Join() {
        std::vector<std::vector<std::byte>> pieces = std::exchange(m_pieces, {});
        std::vector<std::byte> joined;
        joined.reserve(pieces.empty() ? 0 : (pieces.size() - 1) * PieceSize + pieces.back().size());
        for (std::vector<std::byte>& piece : pieces) {
            joined.insert(joined.end(), piece.begin(), piece.end());
            piece = std::vector<std::byte>(); // an empty list would keep its memory
        }
        return joined;
    }

private:
    /// What is no larger grows as any vector.
    static constexpr std::size_t Small = std::size_t(1024) * 1024;

    std::vector<std::vector<std::byte>> m_pieces; ///< all but the last are full
};

} // namespace Zantrel::Text
