// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "editing/pattern_syntax.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel::Editing {

/// The rule that a text has to follow: a regular expression as ECMAScript has them with its flag "u", without
/// back references and looking around, and more lenient where no meaning is in doubt. The value has to match
/// as a whole, so that "^" at the front and "$" at the end change nothing; elsewhere they hold at the ends of
/// the value only, never at those of a line. A pair of surrogates is one character, in values and patterns
/// alike. Cases differ.
///
/// Matching takes time in the length of the value times the number of states, whatever both are, and its
/// stack doesn't grow. Immutable: several threads may match at once.
class Pattern {
public:
    /// Nothing for a text that is no pattern, or one beyond PatternBounds; `why` then gets a sentence.
    static std::optional<Pattern> Compile(std::wstring_view text, std::wstring* why = nullptr);

    bool Matches(std::wstring_view value) const;

    /// The same rule as a pattern of an XML schema, which matches as a whole, too; nothing where that has no
    /// words for it: for "\b" and "\B", for "^" and "$" elsewhere than at the ends, and for what no text of
    /// XML can match.
    std::optional<std::wstring> ToXmlSchema() const;

private:
    /// One state: a character of a set, a fork, a condition on the position, or the end.
    struct State {
        enum class Kind : std::uint8_t { Set, Fork, Begin, End, WordEdge, NoWordEdge, Accept };
        Kind kind = Kind::Accept;
        std::uint32_t next = 0;
        std::uint32_t other = 0; ///< of a Fork the other way, of a Set the piece that has it
    };
    friend class PatternProgram;
    friend class PatternMatch;

    Pattern() = default;

    std::vector<PatternPiece> m_pieces;
    std::vector<State> m_states;
    std::uint32_t m_first = 0;
};

} // namespace Zantrel::Editing
