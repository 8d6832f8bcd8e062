// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel::Editing {

/// The character at a position, which goes behind it. A pair of surrogates is one, whatever wchar_t is.
char32_t NextCharacter(std::wstring_view text, std::size_t& position) noexcept;
/// How many characters a text has.
std::size_t CountCharacters(std::wstring_view text) noexcept;
void AppendCharacter(std::wstring& text, char32_t character);

struct CharacterRange {
    char32_t first;
    char32_t last; ///< in the range, too
};

/// Some characters, up to the greatest value of a wchar_t or a pair.
class CharacterSet {
public:
    static constexpr char32_t Greatest = 0xFFFFFFFF;

    CharacterSet() = default;
    explicit CharacterSet(std::vector<CharacterRange> ranges, bool isNegated = false);

    bool Has(char32_t character) const noexcept {
        bool const isAscii = character < 0x80;
        return isAscii ? ((m_ascii[character >> 6] >> (character & 63)) & 1) != 0 : HasBeyondAscii(character);
    }
    /// In order, with something between any two.
    std::vector<CharacterRange> const& GetRanges() const noexcept { return m_ranges; }

private:
    bool HasBeyondAscii(char32_t character) const noexcept;

    std::vector<CharacterRange> m_ranges;
    std::array<std::uint64_t, 2> m_ascii{}; ///< a bit for each of the first 128
};

} // namespace Zantrel::Editing
