// SPDX-License-Identifier: Apache-2.0
#include "text/utf16_order.h"

#include "text/surrogates.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Zantrel::Text {

namespace {

/// The UTF-16 code units of a wide text, one after the other.
class Units {
public:
    explicit Units(std::wstring_view text) noexcept : m_text(text) {}

    /// The next unit, or -1 at the end. What is no code point counts as one unit above all others.
    std::int64_t Next() noexcept {
        if (m_trail != 0) {
            std::int64_t const trail = m_trail;
            m_trail = 0;
            return trail;
        }
        if (m_text.empty()) {
            return -1;
        }
        auto const unit = static_cast<char32_t>(m_text.front());
        m_text.remove_prefix(1);
        if (unit < 0x10000 || unit > 0x10FFFF) {
            return unit;
        }
        m_trail = LowSurrogateOf(unit);
        return HighSurrogateOf(unit);
    }

private:
    std::wstring_view m_text;
    char32_t m_trail = 0;
};

/// How many characters the beginnings have in common; two words at a time, since paths, and the names of one
/// group, often have many.
std::size_t CommonSize(std::wstring_view left, std::wstring_view right) noexcept {
    using TwoWords = std::array<std::uint64_t, 2>;
    constexpr std::size_t InBoth = sizeof(TwoWords) / sizeof(wchar_t);
    std::size_t const shorter = std::min(left.size(), right.size());
    std::size_t same = 0;
    for (; same + InBoth <= shorter; same += InBoth) {
        TwoWords ofLeft;
        TwoWords ofRight;
        std::memcpy(&ofLeft, left.data() + same, sizeof ofLeft);
        std::memcpy(&ofRight, right.data() + same, sizeof ofRight);
        if (((ofLeft[0] ^ ofRight[0]) | (ofLeft[1] ^ ofRight[1])) != 0) {
            break;
        }
    }
    while (same < shorter && left[same] == right[same]) {
        ++same;
    }
    return same;
}

} // namespace

// Equal units are equal in both forms, so the common beginning is passed over without looking at what it is.
// It may end inside of a pair, when one text has a pair as two units and the other one has it as one, or when
// two pairs differ in their second halves only: the units from there on compare right in each case, since a
// high surrogate that is alike on both sides decides nothing.
int Compare(std::wstring_view left, std::wstring_view right) noexcept {
    std::size_t const same = CommonSize(left, right);
    if (same < std::min(left.size(), right.size())) {
        auto const leftUnit = static_cast<char32_t>(left[same]);
        auto const rightUnit = static_cast<char32_t>(right[same]);
        if (std::max(leftUnit, rightUnit) < FirstSurrogate) { // each is one unit in both forms
            return leftUnit < rightUnit ? -1 : 1;
        }
    }
    Units leftUnits(left.substr(same));
    Units rightUnits(right.substr(same));
    for (;;) {
        std::int64_t const leftUnit = leftUnits.Next();
        std::int64_t const rightUnit = rightUnits.Next();
        if (leftUnit != rightUnit) {
            return leftUnit < rightUnit ? -1 : 1;
        }
        if (leftUnit < 0) {
            return 0;
        }
    }
}

} // namespace Zantrel::Text
