// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel::Editing {

/// A range of characters, both ends in it.
struct CharacterRange {
    char32_t first;
    char32_t last;
};

/// The rule that a text has to follow: a regular expression as ECMAScript has them, without back references
/// and looking around. The value has to match as a whole, so that "^" at the front and "$" at the end change
/// nothing; elsewhere they hold at the ends of the value only, and never match at a line's end. A pair of
/// surrogates is one character, in values and patterns alike. Cases differ.
///
/// Matching takes time in the length of the value times the number of states, whatever both are, and can't
/// overflow the stack. Immutable: several threads may match at once.
class Pattern {
public:
    static constexpr std::size_t LongestText = 4096; ///< in characters of the pattern
    static constexpr std::size_t MostStates = 10000; ///< with all repetitions written out
    static constexpr std::size_t DeepestNesting = 100;

    /// Nothing for a text that is no pattern, or one beyond the bounds; `why` then gets a sentence.
    static std::optional<Pattern> Compile(std::wstring_view text, std::wstring* why = nullptr);

    bool Matches(std::wstring_view value) const;

    /// The same rule as a pattern of an XML schema, which matches as a whole, too; nothing where that has no
    /// words for it: for "\b", and for "^" and "$" elsewhere than at the ends.
    std::optional<std::wstring> ToXmlSchema() const;

private:
    friend class PatternParser;
    friend class PatternProgram;
    friend class PatternMatch;

    /// One piece of the pattern, its children by their places in m_pieces.
    struct Piece {
        enum class Kind { Empty, Set, Sequence, Alternatives, Repeat, Begin, End, Boundary, NoBoundary };
        Kind kind = Kind::Empty;
        std::size_t set = 0;               ///< in m_sets
        std::vector<std::size_t> children; ///< of Sequence, Alternatives and Repeat
        std::size_t least = 0;             ///< of Repeat
        std::size_t most = 0;              ///< Unbounded: no end
    };
    /// One state: a character of a set, a fork, or a condition on the position; goes on at `next`.
    struct State {
        enum class Kind { Set, Fork, Begin, End, Boundary, NoBoundary, Accept };
        Kind kind = Kind::Accept;
        std::uint32_t set = 0;
        std::uint32_t next = 0;
        std::uint32_t other = 0; ///< of Fork
    };
    using Set = std::vector<CharacterRange>; ///< in order, apart from each other
    static constexpr std::size_t Unbounded = static_cast<std::size_t>(-1);

    Pattern() = default;

    std::vector<Piece> m_pieces; ///< the last is the whole
    std::vector<Set> m_sets;
    std::vector<State> m_states;
};

} // namespace Zantrel::Editing
