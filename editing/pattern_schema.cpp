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

void AppendEscaped(std::wstring& text, char32_t character) {
    // No "$": it is a character like any other there, and an escape of it would be no pattern.
    constexpr std::u32string_view controls = U"\t\n\r", special = U"\\|.-^?*+{}()[]";
    if (auto const index = controls.find(character); index != controls.npos) {
        text.append(L"\\").append(1, std::wstring_view(L"tnr")[index]);
        return;
    }
    text.append(special.find(character) != special.npos ? L"\\" : L"");
    AppendCharacter(text, character);
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

    void AppendCounts(PatternPiece const& piece) {
        bool const isEndless = piece.most == PatternPiece::Unbounded;
        if (isEndless && piece.least <= 1) {
            m_text.append(piece.least == 0 ? L"*" : L"+");
        } else if (piece.least == 0 && piece.most == 1) {
            m_text.append(L"?");
        } else {
            m_text.append(L"{").append(std::to_wstring(piece.least)).append(L",");
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
            AppendEscaped(m_text, range.first);
            if (range.last != range.first) {
                m_text.append(L"-");
                AppendEscaped(m_text, range.last);
            }
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
