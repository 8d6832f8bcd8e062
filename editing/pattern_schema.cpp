// SPDX-License-Identifier: Apache-2.0
#include "editing/pattern.h"

#include <algorithm>

// A schema's pattern matches as a whole and knows no conditions. So "^" and "$" are left out where they say
// nothing, and all else that is a condition can't be said. Sets are written as their ranges, never by a
// letter: a schema's "\d" is every digit of Unicode, and ours is ten.

namespace Zantrel::Editing {

namespace {

using Kind = PatternPiece::Kind;

/// What XML can carry.
constexpr CharacterRange XmlCharacters[] = {
    {0x9, 0xA}, {0xD, 0xD}, {0x20, 0xD7FF}, {0xE000, 0xFFFD}, {0x10000, 0x10FFFF}};

/// What a schema has no words for: thrown within this file only.
struct NotSaid {};

// No "$": it is a character like any other there, and an escape of it would be no pattern.
constexpr std::u32string_view Controls = U"\t\n\r", Special = U"\\|.-^?*+{}()[]";

bool IsEscaped(char32_t character) {
    return Controls.find(character) != Controls.npos || Special.find(character) != Special.npos;
}

void AppendEscaped(std::wstring& text, char32_t character) {
    text.append(IsEscaped(character) ? L"\\" : L"");
    if (auto const index = Controls.find(character); index != Controls.npos) {
        text.append(1, std::wstring_view(L"tnr")[index]);
    } else {
        AppendCharacter(text, character);
    }
}

/// Of what is escaped at its begin one by one: there are validators that take no range to begin so.
void AppendRange(std::wstring& text, CharacterRange range) {
    for (; range.first != range.last && IsEscaped(range.first); ++range.first) {
        AppendEscaped(text, range.first);
    }
    AppendEscaped(text, range.first);
    if (range.last != range.first) {
        text.append(L"-");
        AppendEscaped(text, range.last);
    }
}

/// Puts the pieces of a pattern together again, in the words of a schema.
class SchemaPattern {
public:
    explicit SchemaPattern(std::vector<PatternPiece> const& pieces) : m_pieces(pieces) {}

    std::wstring Write() {
        Append(m_pieces.back(), true, true);
        return std::move(m_text);
    }

private:
    /// Whether it stands at the value's begin and end, whatever matches.
    void Append(PatternPiece const& piece, bool isFirst, bool isLast) {
        switch (piece.kind) {
        case Kind::Set:
            return AppendSet(piece.set);
        case Kind::Sequence:
            return AppendSequence(piece, isFirst, isLast);
        case Kind::Alternatives:
            for (std::size_t const child : piece.children) {
                m_text.append(child == piece.children.front() ? L"" : L"|");
                Append(m_pieces[child], isFirst, isLast);
            }
            return;
        case Kind::Repetition:
            // No round of it is known to be the first or the last.
            AppendGroup(m_pieces[piece.children.front()], false, false);
            return AppendCounts(piece);
        case Kind::Begin:
            return Require(isFirst);
        case Kind::End:
            return Require(isLast);
        case Kind::WordEdge:
        case Kind::NoWordEdge:
            return Require(false);
        }
    }

    static void Require(bool isSaid) {
        if (!isSaid) {
            throw NotSaid();
        }
    }

    void AppendGroup(PatternPiece const& piece, bool isFirst, bool isLast) {
        bool const isOne = piece.kind == Kind::Set;
        m_text.append(isOne ? L"" : L"(");
        Append(piece, isFirst, isLast);
        m_text.append(isOne ? L"" : L")");
    }

    void AppendSequence(PatternPiece const& piece, bool isFirst, bool isLast) {
        auto const isEnd = [&](std::size_t child) { return m_pieces[child].kind == Kind::End; };
        for (auto child = piece.children.begin(); child != piece.children.end(); ++child) {
            bool const nothingFollows = std::all_of(std::next(child), piece.children.end(), isEnd);
            PatternPiece const& part = m_pieces[*child];
            // The piece of a group is what stands in it, and "|" binds less than what stands beside it.
            bool const isGroup = part.kind == Kind::Alternatives;
            isGroup ? AppendGroup(part, isFirst, isLast && nothingFollows)
                    : Append(part, isFirst, isLast && nothingFollows);
            isFirst = isFirst && part.kind == Kind::Begin;
        }
    }

    bool TakesNothing(PatternPiece const& piece) const {
        auto const takesNothing = [this](std::size_t child) { return TakesNothing(m_pieces[child]); };
        switch (piece.kind) {
        case Kind::Set:
            return false;
        case Kind::Alternatives:
            return std::any_of(piece.children.begin(), piece.children.end(), takesNothing);
        case Kind::Repetition:
            return piece.least == 0 || takesNothing(piece.children.front());
        default:
            return std::all_of(piece.children.begin(), piece.children.end(), takesNothing);
        }
    }

    /// What may be nothing may come less often, too. There are validators that don't see that.
    void AppendCounts(PatternPiece const& piece) {
        bool const isEndless = piece.most == PatternPiece::Unbounded;
        std::size_t const least = TakesNothing(m_pieces[piece.children.front()]) ? 0 : piece.least;
        if (isEndless && least <= 1) {
            m_text.append(least == 0 ? L"*" : L"+");
        } else if (least == 0 && piece.most == 1) {
            m_text.append(L"?");
        } else {
            m_text.append(L"{").append(std::to_wstring(least)).append(L",");
            m_text.append(isEndless ? L"" : std::to_wstring(piece.most)).append(L"}");
        }
    }

    void AppendSet(CharacterSet const& set) {
        std::vector<CharacterRange> ranges;
        for (CharacterRange const range : set.GetRanges()) {
            for (CharacterRange const known : XmlCharacters) {
                CharacterRange const shared{std::max(range.first, known.first),
                                            std::min(range.last, known.last)};
                if (shared.first <= shared.last) {
                    ranges.push_back(shared);
                }
            }
        }
        // Schemas have no set that nothing is in.
        Require(!ranges.empty());
        bool const isOne = ranges.size() == 1 && ranges.front().first == ranges.front().last;
        m_text.append(isOne ? L"" : L"[");
        for (CharacterRange const range : ranges) {
            AppendRange(m_text, range);
        }
        m_text.append(isOne ? L"" : L"]");
    }

    std::vector<PatternPiece> const& m_pieces;
    std::wstring m_text;
};

} // namespace

std::optional<std::wstring> Pattern::ToXmlSchema() const {
    try {
        return SchemaPattern(m_pieces).Write();
    } catch (NotSaid const&) {
        return std::nullopt;
    }
}

} // namespace Zantrel::Editing
