// SPDX-License-Identifier: Apache-2.0
#include "database/path_index.h"

#include "store/prefetch.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

// A table half as large again as what it holds. A node stands at the place that the upper half of its hash
// chooses or at one of the next few: the first that was free, so that a search ends at a free one. A mark
// beside each place, never 0 unless it is free, is a byte of the hash: it tells nearly all strangers apart
// without a look at their nodes, and the path itself decides. A document chooses the paths and could choose
// such as have one hash: a node that finds no place within its steps stays out, and no search goes further.

namespace Zantrel {

namespace {

constexpr std::size_t MaxSteps = 64;
constexpr std::size_t Line = 64;      ///< bytes that memory gives at once, on most processors
constexpr std::size_t MaxAhead = 512; ///< further on the processor asks by itself
/// More than the half of a hash can choose from.
constexpr std::size_t MaxSize = 0xFFFFFFFF;

std::uint8_t MarkOf(std::uint64_t hash) { return static_cast<std::uint8_t>(hash | 1); }

/// Two words at a time, so that one product needn't wait for the other.
struct TwoWords {
    std::uint64_t first = 0;
    std::uint64_t second = 0;

    void Mix(char const* bytes, std::size_t size) {
        std::uint64_t words[2] = {};
        std::memcpy(words, bytes, size);
        first = (first ^ words[0]) * 0x9E3779B97F4A7C15;
        second = (second ^ words[1]) * 0xC2B2AE3D27D4EB4F;
    }
};

/// Whether that is the node's path. Nearly always it is, and then the cursor's bag is read next.
bool IsAt(ContentList::Node const& node, std::wstring_view path) {
    // The text stands behind the node, as a rule; asked for now, its lines come together.
    auto const begin = reinterpret_cast<std::uintptr_t>(&node);
    std::size_t const size = sizeof(node) + path.size() * sizeof(wchar_t);
    for (std::size_t at = Line; at < std::min(size, MaxAhead); at += Line) {
        Prefetch(reinterpret_cast<void const*>(begin + at));
    }
    Prefetch(node.m_pProperties);
    return node.m_path == path;
}

} // namespace

std::uint64_t PathIndex::HashOf(std::wstring_view path) noexcept {
    constexpr std::size_t Both = 2 * sizeof(std::uint64_t);
    std::size_t const size = path.size() * sizeof(wchar_t);
    auto const* const bytes = reinterpret_cast<char const*>(path.data());
    TwoWords words{size, 0};
    if (size < Both) {
        words.Mix(bytes, size);
    } else {
        for (std::size_t at = 0; at + Both < size; at += Both) {
            words.Mix(bytes + at, Both);
        }
        words.Mix(bytes + size - Both, Both); // overlaps the one before
    }
    std::uint64_t hash = words.first ^ (words.second >> 32 | words.second << 32);
    hash = (hash ^ hash >> 29) * 0xBF58476D1CE4E5B9;
    return hash ^ hash >> 32;
}

PathIndex::PathIndex(std::deque<Maker::HashedNode> const& nodes)
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
    Prefetch(&m_places[first]);
    for (std::size_t at = first; at != first + MaxSteps && m_marks[at] != 0; ++at) {
        if (m_marks[at] == mark && IsAt(*m_places[at], path)) {
            return &m_places[at];
        }
    }
    return nullptr;
}

} // namespace Zantrel
