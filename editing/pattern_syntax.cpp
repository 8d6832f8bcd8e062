// SPDX-License-Identifier: Apache-2.0
#include "editing/pattern_syntax.h"

#include <optional>
#include <utility>

// Characters are decoded before anything is read, so that a range or a repetition never tears a pair of
// surrogates, and the places in sentences count what a person counts. A piece is added behind all that it is
// made of, which leaves the whole as the last one.
//
// What other engines read in different ways is refused instead of guessed: a layout is made once and read by
// many programs, and a pattern that means something else there is worse than none.

namespace Zantrel::Editing {

namespace {

using Kind = PatternPiece::Kind;
using Ranges = std::vector<CharacterRange>;

std::u32string Decode(std::wstring_view text) {
    std::u32string characters;
    for (std::size_t position = 0; position != text.size();) {
        characters += NextCharacter(text, position);
    }
    return characters;
}

bool IsDigit(char32_t character) { return character >= U'0' && character <= U'9'; }
bool IsLetter(char32_t character) {
    return (character >= U'a' && character <= U'z') || (character >= U'A' && character <= U'Z');
}

// As ECMAScript has them: digits and letters are those of ASCII, but white space and line ends are those of
// Unicode.
constexpr CharacterRange Digits[] = {{U'0', U'9'}};
constexpr CharacterRange WordCharacters[] = {{U'0', U'9'}, {U'A', U'Z'}, {U'_', U'_'}, {U'a', U'z'}};
constexpr CharacterRange Blanks[] = {{U'\t', U'\r'},   {U' ', U' '},     {0xA0, 0xA0},     {0x1680, 0x1680},
                                     {0x2000, 0x200A}, {0x2028, 0x2029}, {0x202F, 0x202F}, {0x205F, 0x205F},
                                     {0x3000, 0x3000}, {0xFEFF, 0xFEFF}};
constexpr CharacterRange LineEnds[] = {{U'\n', U'\n'}, {U'\r', U'\r'}, {0x2028, 0x2029}};

template <std::size_t size> Ranges Those(CharacterRange const (&ranges)[size]) {
    return Ranges(ranges, ranges + size);
}
template <std::size_t size> Ranges AllBut(CharacterRange const (&ranges)[size]) {
    return CharacterSet(Those(ranges), true).GetRanges();
}

/// The characters that "\d" and the like stand for.
std::optional<Ranges> RangesOf(char32_t letter) {
    switch (letter) {
    case U'd':
        return Those(Digits);
    case U'w':
        return Those(WordCharacters);
    case U's':
        return Those(Blanks);
    case U'D':
        return AllBut(Digits);
    case U'W':
        return AllBut(WordCharacters);
    case U'S':
        return AllBut(Blanks);
    default:
        return std::nullopt;
    }
}

/// Reads a pattern from front to back, one function for each thing that it is made of. Goes as deep as groups
/// are nested, which is bounded, and no deeper for a long one.
class PatternParser {
public:
    explicit PatternParser(std::u32string text) : m_text(std::move(text)) {}

    std::vector<PatternPiece> Parse() {
        ParseAlternatives();
        if (!IsAtEnd()) {
            Fail(L"\")\" without \"(\"");
        }
        return std::move(m_pieces);
    }

private:
    [[noreturn]] void Fail(std::wstring_view what) const {
        throw PatternError{std::wstring(what) + L", at character " + std::to_wstring(m_at + 1) + L"."};
    }

    bool IsAtEnd() const { return m_at == m_text.size(); }
    bool IsAt(std::u32string_view what) const { return m_text.compare(m_at, what.size(), what) == 0; }
    bool Take(std::u32string_view what) {
        bool const isThere = IsAt(what);
        m_at += isThere ? what.size() : 0;
        return isThere;
    }
    char32_t Next(std::wstring_view missing) {
        if (IsAtEnd()) {
            Fail(missing);
        }
        return m_text[m_at++];
    }

    std::size_t Add(PatternPiece piece) {
        m_pieces.push_back(std::move(piece));
        return m_pieces.size() - 1;
    }
    std::size_t AddSet(Ranges ranges, bool isNegated = false) {
        return Add({Kind::Set, {}, CharacterSet(std::move(ranges), isNegated)});
    }

    std::size_t ParseAlternatives() {
        PatternPiece piece{Kind::Alternatives, {ParseSequence()}};
        while (Take(U"|")) {
            piece.children.push_back(ParseSequence());
        }
        return piece.children.size() == 1 ? piece.children.front() : Add(std::move(piece));
    }

    std::size_t ParseSequence() {
        PatternPiece piece{Kind::Sequence, {}};
        while (!IsAtEnd() && !IsAt(U"|") && !IsAt(U")")) {
            piece.children.push_back(ParseTerm());
        }
        return Add(std::move(piece));
    }

    std::size_t ParseTerm() {
        static constexpr std::pair<std::u32string_view, Kind> conditions[] = {
            {U"^", Kind::Begin}, {U"$", Kind::End}, {U"\\b", Kind::WordEdge}, {U"\\B", Kind::NoWordEdge}};
        // Before the atom, since "\b" and "\B" begin like an escape.
        for (auto const& [word, kind] : conditions) {
            if (Take(word)) {
                if (IsAtRepetition()) {
                    Fail(L"Nothing that could be repeated");
                }
                return Add({kind, {}});
            }
        }
        if (IsAtRepetition()) {
            Fail(L"Nothing that could be repeated");
        }
        return ParseRepetition(ParseAtom());
    }

    bool IsAtRepetition() const {
        return !IsAtEnd() && std::u32string_view(U"*+?{").find(m_text[m_at]) != std::u32string_view::npos;
    }

    std::size_t ParseRepetition(std::size_t repeated) {
        PatternPiece piece{Kind::Repetition, {repeated}};
        piece.most = PatternPiece::Unbounded;
        if (Take(U"?")) {
            piece.most = 1;
        } else if (Take(U"+")) {
            piece.least = 1;
        } else if (Take(U"{")) {
            ParseCounts(piece);
        } else if (!Take(U"*")) {
            return repeated;
        }
        Take(U"?"); // as few as do: the same texts match
        if (IsAtRepetition()) {
            Fail(L"A repetition of a repetition, which needs a group");
        }
        return Add(std::move(piece));
    }

    void ParseCounts(PatternPiece& piece) {
        piece.least = ParseCount();
        if (!Take(U",")) {
            piece.most = piece.least;
        } else if (!IsAt(U"}")) {
            piece.most = ParseCount();
        }
        if (!Take(U"}")) {
            Fail(L"\"{\" that isn't followed by counts and \"}\"; as a character it is \"\\{\"");
        }
        if (piece.most < piece.least) {
            Fail(L"A repetition that ends before it begins");
        }
    }

    std::size_t ParseCount() {
        if (IsAtEnd() || !IsDigit(m_text[m_at])) {
            Fail(L"\"{\" without a count; as a character it is \"\\{\"");
        }
        std::size_t count = 0;
        for (; !IsAtEnd() && IsDigit(m_text[m_at]); ++m_at) {
            count = 10 * count + (m_text[m_at] - U'0');
            // Within the loop, so that no number of digits makes the count wrap.
            if (count > PatternBounds::MostStates) {
                Fail(L"More than " + std::to_wstring(PatternBounds::MostStates) + L" repetitions");
            }
        }
        return count;
    }

    std::size_t ParseAtom() {
        if (Take(U".")) {
            return AddSet(AllBut(LineEnds));
        }
        if (Take(U"[")) {
            return ParseSet();
        }
        if (Take(U"(")) {
            return ParseGroup();
        }
        if (Take(U"\\")) {
            return AddSet(ParseEscape());
        }
        char32_t const character = m_text[m_at++];
        return AddSet({{character, character}});
    }

    std::size_t ParseGroup() {
        // Before the names of groups, as looking back begins like one. A name is read over: nothing can refer
        // to it, and so it may stand there twice.
        if (IsAt(U"?=") || IsAt(U"?!") || IsAt(U"?<=") || IsAt(U"?<!")) {
            Fail(L"Looking ahead or back, which isn't supported");
        }
        if (Take(U"?<")) {
            while (Next(L"A name of a group that doesn't end") != U'>') {
            }
        } else if (IsAt(U"?") && !Take(U"?:")) {
            Fail(L"An unknown kind of group");
        }
        if (++m_depth > PatternBounds::DeepestNesting) {
            Fail(L"Groups too deep in each other");
        }
        std::size_t const group = ParseAlternatives();
        if (!Take(U")")) {
            Fail(L"A group that doesn't end");
        }
        --m_depth;
        return group;
    }

    /// Behind "[".
    /// The set may be empty, as "]" ends it also where it stands first; nothing is in it, and in its opposite
    /// everything. A "-" is itself at both ends, and behind a "\d" or the like.
    std::size_t ParseSet() {
        bool const isNegated = Take(U"^");
        Ranges ranges;
        while (!Take(U"]")) {
            Ranges const first = ParseMember();
            bool const isRange = IsAt(U"-") && !IsAt(U"-]");
            if (!isRange || !IsCharacter(first)) {
                ranges.insert(ranges.end(), first.begin(), first.end());
                continue;
            }
            ++m_at;
            Ranges const last = ParseMember();
            if (!IsCharacter(last) || last.front().first < first.front().first) {
                Fail(L"A range of characters that ends before it begins, or with no character");
            }
            ranges.push_back({first.front().first, last.front().first});
        }
        return AddSet(std::move(ranges), isNegated);
    }

    static bool IsCharacter(Ranges const& ranges) {
        return ranges.size() == 1 && ranges.front().first == ranges.front().last;
    }

    Ranges ParseMember() {
        // A backspace, here alone: a condition can't be a member.
        if (Take(U"\\b")) {
            return {{U'\b', U'\b'}};
        }
        if (Take(U"\\")) {
            return ParseEscape();
        }
        char32_t const character = Next(L"\"[\" without \"]\"");
        return {{character, character}};
    }

    /// Behind "\".
    Ranges ParseEscape() {
        char32_t const letter = Next(L"\"\\\" at the end");
        if (std::optional<Ranges> ranges = RangesOf(letter)) {
            return *std::move(ranges);
        }
        char32_t const character = ParseCharacterEscape(letter);
        return {{character, character}};
    }

    char32_t ParseCharacterEscape(char32_t letter) {
        static constexpr std::u32string_view letters = U"tnrvf0", controls(U"\t\n\r\v\f\0", 6);
        // A digit behind "\0" would make it an octal number, which the references below refuse with the
        // others.
        auto const index = letters.find(letter);
        if (index != letters.npos && (letter != U'0' || IsAtEnd() || !IsDigit(m_text[m_at]))) {
            return controls[index];
        }
        if (letter == U'x') {
            return ParseHexadecimal(2);
        }
        if (letter == U'u') {
            return ParseCode();
        }
        if (letter == U'c' && !IsAtEnd() && IsLetter(m_text[m_at])) {
            return m_text[m_at++] & 0x1F;
        }
        if (IsDigit(letter) || letter == U'k') {
            Fail(L"A reference to a group, which isn't supported");
        }
        if (IsLetter(letter)) {
            Fail(L"An unknown escape");
        }
        return letter;
    }

    /// Behind "\u": four digits, of which two may be a pair, or any number in braces.
    char32_t ParseCode() {
        if (Take(U"{")) {
            char32_t code = 0;
            do {
                code = 16 * code + ParseHexadecimal(1);
                if (code > 0x10FFFF) {
                    Fail(L"No character has a number above 10FFFF");
                }
            } while (!Take(U"}"));
            return code;
        }
        char32_t const code = ParseHexadecimal(4);
        // What follows and isn't the other half is read once more, as a character of its own; the first half
        // then stands alone, as it may in values.
        std::size_t const behind = m_at;
        if (code >= 0xD800 && code <= 0xDBFF && Take(U"\\u") && !IsAt(U"{")) {
            char32_t const low = ParseHexadecimal(4);
            if (low >= 0xDC00 && low <= 0xDFFF) {
                return 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
            }
        }
        m_at = behind;
        return code;
    }

    char32_t ParseHexadecimal(int digits) {
        char32_t code = 0;
        for (; digits != 0; --digits) {
            char32_t const digit = Next(L"A hexadecimal digit is missing");
            char32_t const lower = digit | 0x20;
            bool const isLetter = lower >= U'a' && lower <= U'f';
            if (!IsDigit(digit) && !isLetter) {
                Fail(L"A hexadecimal digit is missing");
            }
            code = 16 * code + (isLetter ? lower - U'a' + 10 : digit - U'0');
        }
        return code;
    }

    std::u32string const m_text;
    std::size_t m_at = 0;
    std::size_t m_depth = 0;
    std::vector<PatternPiece> m_pieces;
};

} // namespace

std::vector<PatternPiece> ParsePattern(std::wstring_view text) {
    if (text.size() > PatternBounds::LongestText) {
        throw PatternError{L"Longer than " + std::to_wstring(PatternBounds::LongestText) + L" characters."};
    }
    return PatternParser(Decode(text)).Parse();
}

} // namespace Zantrel::Editing
