// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "editing/character_set.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel::Editing {

/// Why a text is no pattern: thrown within this folder only.
struct PatternError {
    std::wstring why;
};

/// One piece of a pattern, with its children by their places among all pieces. Children come before what
/// they are part of, and the whole comes last.
struct PatternPiece {
    enum class Kind { Set, Sequence, Alternatives, Repetition, Begin, End, WordEdge, NoWordEdge };
    static constexpr std::size_t Unbounded = static_cast<std::size_t>(-1);

    Kind kind = Kind::Sequence;        ///< an empty one is the empty text
    std::vector<std::size_t> children; ///< of a Sequence, of Alternatives, and the one of a Repetition
    CharacterSet set{};
    std::size_t least = 0; ///< of a Repetition
    std::size_t most = 0;
};

struct PatternBounds {
    static constexpr std::size_t LongestText = 4096;
    static constexpr std::size_t DeepestNesting = 100;
    static constexpr std::size_t MostStates = 1000;
};

/// Takes a pattern apart. Throws PatternError.
std::vector<PatternPiece> ParsePattern(std::wstring_view text);

} // namespace Zantrel::Editing
