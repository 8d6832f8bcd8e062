// SPDX-License-Identifier: Apache-2.0
#include "editing/pattern.h"

#include <utility>

// A pattern becomes a machine of states that is in several of them at once (Thompson's construction), and so
// never tries one way after another. While it reads a value it keeps the states that wait for a character,
// each once; forks and conditions are followed at once, with a stack of its own, when they are come to.

namespace Zantrel::Editing {

/// Writes the states, from the back to the front, since each has to know what follows it. Goes as deep as
/// groups are nested.
class PatternProgram {
public:
    explicit PatternProgram(Pattern& pattern) : m_pattern(pattern) {}

    void Write() {
        std::uint32_t const end = Add({});
        m_pattern.m_first = WritePiece(m_pattern.m_pieces.size() - 1, end);
    }

private:
    using StateKind = Pattern::State::Kind;

    std::uint32_t Add(Pattern::State state) {
        m_pattern.m_states.push_back(state);
        return static_cast<std::uint32_t>(m_pattern.m_states.size() - 1);
    }
    std::uint32_t AddFork(std::uint32_t next, std::uint32_t other) {
        return Add({StateKind::Fork, next, other});
    }

    /// Gives the first state of the piece, behind which `next` follows. Each call counts, not each state: a
    /// repetition of nothing has none.
    std::uint32_t WritePiece(std::size_t index, std::uint32_t next) {
        // Two repetitions of nothing in each other would else be written 100 million times. Four calls for
        // each state that may be are enough for a character within two groups, which takes three.
        constexpr std::size_t mostCalls = 4 * PatternBounds::MostStates;
        if (m_pattern.m_states.size() >= PatternBounds::MostStates || ++m_calls > mostCalls) {
            throw PatternError{L"With all repetitions it has more than " +
                               std::to_wstring(PatternBounds::MostStates) + L" places."};
        }
        PatternPiece const& piece = m_pattern.m_pieces[index];
        switch (piece.kind) {
        case PatternPiece::Kind::Set:
            return Add({StateKind::Set, next, static_cast<std::uint32_t>(index)});
        case PatternPiece::Kind::Sequence:
            for (auto child = piece.children.rbegin(); child != piece.children.rend(); ++child) {
                next = WritePiece(*child, next);
            }
            return next;
        case PatternPiece::Kind::Alternatives:
            return WriteAlternatives(piece, next);
        case PatternPiece::Kind::Repetition:
            return WriteRepetition(piece, next);
        case PatternPiece::Kind::Begin:
            return Add({StateKind::Begin, next});
        case PatternPiece::Kind::End:
            return Add({StateKind::End, next});
        case PatternPiece::Kind::WordEdge:
            return Add({StateKind::WordEdge, next});
        case PatternPiece::Kind::NoWordEdge:
            return Add({StateKind::NoWordEdge, next});
        }
        return next;
    }

    std::uint32_t WriteAlternatives(PatternPiece const& piece, std::uint32_t next) {
        std::uint32_t first = WritePiece(piece.children.back(), next);
        for (auto child = std::next(piece.children.rbegin()); child != piece.children.rend(); ++child) {
            first = AddFork(WritePiece(*child, next), first);
        }
        return first;
    }

    /// What may come without end is one body with a fork in front of it, to which it leads back. What may
    /// come a few times more is written as often, each time behind a fork that leads out; what must come
    /// stands in front of these. Only the first is a loop, and a body of nothing does no harm in it: no state
    /// is come to twice in one turn.
    std::uint32_t WriteRepetition(PatternPiece const& piece, std::uint32_t next) {
        std::size_t const repeated = piece.children.front();
        std::uint32_t first = next;
        if (piece.most == PatternPiece::Unbounded) {
            // Made before its body, which has to know where it leads; its way in is known afterwards.
            first = AddFork(0, next);
            std::uint32_t const body = WritePiece(repeated, first);
            m_pattern.m_states[first].next = body;
        } else {
            for (std::size_t i = piece.least; i != piece.most; ++i) {
                first = AddFork(WritePiece(repeated, first), next);
            }
        }
        for (std::size_t i = 0; i != piece.least; ++i) {
            first = WritePiece(repeated, first);
        }
        return first;
    }

    Pattern& m_pattern;
    std::size_t m_calls = 0;
};

/// One value on its way through the states.
class PatternMatch {
public:
    PatternMatch(Pattern const& pattern, std::wstring_view value)
        : m_pattern(pattern), m_value(value), m_reached(pattern.m_states.size(), 0) {}

    /// Each turn takes one character with all states that wait for one, and so costs no more than there are
    /// states. Raising the number of the turn forgets at once which states have been come to.
    bool Run() {
        TakeNext();
        GoTo(m_pattern.m_first);
        while (m_isInside && !m_waiting.empty()) {
            m_leaving.swap(m_waiting);
            m_waiting.clear();
            ++m_turn;
            TakeNext();
            for (std::uint32_t const index : m_leaving) {
                Pattern::State const& state = m_pattern.m_states[index];
                if (m_pattern.m_pieces[state.other].set.Has(m_before)) {
                    GoTo(state.next);
                }
            }
        }
        return !m_isInside && m_isAccepted;
    }

private:
    using StateKind = Pattern::State::Kind;

    /// Passes over one character, if the value has begun, and looks at the next.
    void TakeNext() {
        m_before = m_after;
        m_wasInside = m_isInside;
        m_isInside = m_position != m_value.size();
        m_after = m_isInside ? NextCharacter(m_value, m_position) : 0;
    }

    /// The same as "\w" takes, whatever the locale.
    static bool IsOfWord(char32_t character) {
        return (character >= U'a' && character <= U'z') || (character >= U'A' && character <= U'Z') ||
               (character >= U'0' && character <= U'9') || character == U'_';
    }
    bool IsAtWordEdge() const {
        return (m_wasInside && IsOfWord(m_before)) != (m_isInside && IsOfWord(m_after));
    }

    void GoTo(std::uint32_t first) {
        m_open.push_back(first);
        while (!m_open.empty()) {
            std::uint32_t const index = m_open.back();
            m_open.pop_back();
            if (std::exchange(m_reached[index], m_turn) != m_turn) {
                Follow(index);
            }
        }
    }

    void Follow(std::uint32_t index) {
        Pattern::State const& state = m_pattern.m_states[index];
        switch (state.kind) {
        case StateKind::Set:
            m_waiting.push_back(index);
            return;
        case StateKind::Accept:
            // In the midst of a value it counts for nothing, since the value must match as a whole.
            m_isAccepted = !m_isInside;
            return;
        case StateKind::Fork:
            // Which way comes first plays no part: both are gone, and none is preferred.
            m_open.push_back(state.other);
            break;
        case StateKind::Begin:
            if (m_wasInside) {
                return;
            }
            break;
        case StateKind::End:
            if (m_isInside) {
                return;
            }
            break;
        case StateKind::WordEdge:
        case StateKind::NoWordEdge:
            if (IsAtWordEdge() != (state.kind == StateKind::WordEdge)) {
                return;
            }
            break;
        }
        m_open.push_back(state.next);
    }

    Pattern const& m_pattern;
    std::wstring_view m_value;
    std::size_t m_position = 0;
    char32_t m_before = 0, m_after = 0;           ///< the characters on both sides
    bool m_wasInside = false, m_isInside = false; ///< whether they are there
    bool m_isAccepted = false;
    std::size_t m_turn = 1;
    std::vector<std::size_t> m_reached; ///< the turn in which each state was last come to
    std::vector<std::uint32_t> m_waiting, m_leaving, m_open;
};

std::optional<Pattern> Pattern::Compile(std::wstring_view text, std::wstring* why) {
    Pattern pattern;
    try {
        pattern.m_pieces = ParsePattern(text);
        PatternProgram(pattern).Write();
    } catch (PatternError& error) {
        if (why != nullptr) {
            *why = std::move(error.why);
        }
        return std::nullopt;
    }
    return pattern;
}

bool Pattern::Matches(std::wstring_view value) const { return PatternMatch(*this, value).Run(); }

} // namespace Zantrel::Editing
