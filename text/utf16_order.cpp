// SPDX-License-Identifier: Apache-2.0
#include "text/utf16_order.h"

#include "text/surrogates.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

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

} // namespace

// Equal units are equal in both forms, so the common beginning is passed over without looking at what it is.
// It may end inside of a pair, when one text has a pair as two units and the other one has it as one, or when
// two pairs differ in their second halves only: the units from there on compare right in each case, since a
// high surrogate that is alike on both sides decides nothing.
int Compare(std::wstring_view left, std::wstring_view right) noexcept {
    std::size_t const shorter = std::min(left.size(), right.size());
    std::size_t same = 0;
    while (same < shorter && left[same] == right[same]) {
        ++same;
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
