// SPDX-License-Identifier: Apache-2.0
#include "database/path_index.h"

#include <algorithm>

// A table half as large again as what it holds. A node stands at the place that the upper half of its hash
// chooses or at one of the next few: the first that was free, so that a search ends at a free one. A mark
// beside each place, never 0 unless it is free, is a byte of the hash: it tells nearly all strangers apart
// without a look at their nodes, and the path itself decides. A document chooses the paths and could choose
// such as have one hash: a node that finds no place within its steps stays out, and no search goes further.

namespace Zantrel {

namespace {

constexpr std::size_t MaxSteps = 64;
/// More than the half of a hash can choose from.
constexpr std::size_t MaxSize = 0xFFFFFFFF;

std::uint8_t MarkOf(std::uint64_t hash) { return static_cast<std::uint8_t>(hash | 1); }

/// Four units at a time, each in a place of its own: only those beyond U+FFFF overlap, which harms nothing.
std::uint64_t WordAt(wchar_t const* units, std::size_t size) {
    std::uint64_t word = 0;
    for (std::size_t place = 0; place < size; ++place) {
        word ^= static_cast<std::uint64_t>(units[place]) << (16 * place);
    }
    return word;
}

} // namespace

std::uint64_t PathIndex::HashOf(std::wstring_view path) noexcept {
    constexpr std::uint64_t Factor = 0x9E3779B97F4A7C15;
    std::uint64_t hash = path.size();
    auto const mix = [&hash](std::uint64_t word) {
        hash = (hash ^ word) * Factor;
        hash ^= hash >> 32;
    };
    wchar_t const* at = path.data();
    std::size_t left = path.size();
    for (; left >= 4; left -= 4, at += 4) {
        mix(WordAt(at, 4));
    }
    mix(WordAt(at, left));
    mix(0);
    return hash;
}

PathIndex::PathIndex(std::vector<Maker::HashedNode> const& nodes)
    : m_size(std::min(nodes.size() + nodes.size() / 2 + 1, MaxSize)), m_marks(m_size + MaxSteps),
      m_places(m_marks.size()) {
    for (auto const& [hash, node] : nodes) {
        auto const first = m_marks.begin() + static_cast<std::ptrdiff_t>(FirstOf(hash));
        auto const free = std::find(first, first + MaxSteps, 0);
        if (free != first + MaxSteps) {
            *free = MarkOf(hash);
            m_places[static_cast<std::size_t>(free - m_marks.begin())] = node;
        }
    }
}

std::size_t PathIndex::FirstOf(std::uint64_t hash) const noexcept {
    return static_cast<std::size_t>((hash >> 32) * m_size >> 32);
}

PathIndex::Place const* PathIndex::Find(std::wstring_view path) const noexcept {
    std::uint64_t const hash = HashOf(path);
    std::uint8_t const mark = MarkOf(hash);
    std::size_t const first = FirstOf(hash);
    for (std::size_t at = first; at != first + MaxSteps && m_marks[at] != 0; ++at) {
        if (m_marks[at] == mark && m_places[at]->m_path == path) {
            return &m_places[at];
        }
    }
    return nullptr;
}

} // namespace Zantrel
