// SPDX-License-Identifier: Apache-2.0
#include "editing/character_set.h"

#include <algorithm>

// A set is ranges in order that neither overlap nor touch, which a search and a negation rely on, and beside
// them a bit for each character of ASCII: most values have no others, and need no search.

namespace Zantrel::Editing {

namespace {

constexpr bool IsHigh(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLow(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

char32_t UnitAt(std::wstring_view text, std::size_t position) {
    return static_cast<char32_t>(text[position]);
}

/// In order, those that meet made one.
std::vector<CharacterRange> Joined(std::vector<CharacterRange> ranges) {
    std::sort(ranges.begin(), ranges.end(),
              [](CharacterRange left, CharacterRange right) { return left.first < right.first; });
    // The predecessor below is that of a number above another one, and so doesn't wrap at 0.
    std::vector<CharacterRange> joined;
    for (CharacterRange const range : ranges) {
        if (!joined.empty() && (range.first <= joined.back().last || range.first - 1 == joined.back().last)) {
            joined.back().last = std::max(joined.back().last, range.last);
        } else {
            joined.push_back(range);
        }
    }
    return joined;
}

/// All that lies between.
std::vector<CharacterRange> Negated(std::vector<CharacterRange> const& joined) {
    std::vector<CharacterRange> negated;
    char32_t begin = 0;
    for (CharacterRange const range : joined) {
        if (range.first > begin) {
            negated.push_back({begin, range.first - 1});
        }
        // Nothing lies behind it, and its successor would be 0.
        if (range.last == CharacterSet::Greatest) {
            return negated;
        }
        begin = range.last + 1;
    }
    negated.push_back({begin, CharacterSet::Greatest});
    return negated;
}

} // namespace

char32_t NextCharacter(std::wstring_view text, std::size_t& position) noexcept {
    // Half a pair is a character of its own. The position must be one of the text's: who calls looks first.
    char32_t const unit = UnitAt(text, position++);
    if (!IsHigh(unit) || position == text.size() || !IsLow(UnitAt(text, position))) {
        return unit;
    }
    return 0x10000 + ((unit - 0xD800) << 10) + (UnitAt(text, position++) - 0xDC00);
}

std::size_t CountCharacters(std::wstring_view text) noexcept {
    std::size_t count = 0;
    for (std::size_t position = 0; position != text.size(); ++count) {
        NextCharacter(text, position);
    }
    return count;
}

void AppendCharacter(std::wstring& text, char32_t character) {
    // Where a wchar_t holds every character, pairs would be two.
    if (sizeof(wchar_t) == 2 && character > 0xFFFF) {
        text += static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10));
        character = 0xDC00 + ((character - 0x10000) & 0x3FF);
    }
    text += static_cast<wchar_t>(character);
}

CharacterSet::CharacterSet(std::vector<CharacterRange> ranges, bool isNegated)
    : m_ranges(Joined(std::move(ranges))) {
    if (isNegated) {
        m_ranges = Negated(m_ranges);
    }
    for (CharacterRange const range : m_ranges) {
        for (char32_t character = range.first; character < 0x80 && character <= range.last; ++character) {
            m_ascii[character >> 6] |= std::uint64_t{1} << (character & 63);
        }
    }
}

bool CharacterSet::HasBeyondAscii(char32_t character) const noexcept {
    auto const behind =
        std::upper_bound(m_ranges.begin(), m_ranges.end(), character,
                         [](char32_t wanted, CharacterRange const& range) { return wanted < range.first; });
    return behind != m_ranges.begin() && character <= std::prev(behind)->last;
}

} // namespace Zantrel::Editing
