// SPDX-License-Identifier: Apache-2.0
#include "standard/decimal.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

// The number is a quotient of two whole numbers, digits and powers of ten, both of which are held to the last
// bit. Shifted so that it lies below two, it is divided bit by bit for 55 bits: two more than a double has,
// so that with the remainder they say how to round. The smallest doubles have fewer bits, and the shift is
// limited so that the last bit of the 55 is worth half of the least double. No digit of the text is lost to
// rounding on the way: a value half way between two doubles has 768 digits at the most, and what is dropped
// behind those only tells that there is more.

namespace Zantrel::Standard {

namespace {

constexpr int MostDigits = 768;
constexpr int MostDecimals = 308;   ///< of the largest double behind its first digit
constexpr int LeastDecimals = -324; ///< of the least one
constexpr int QuotientBits = 55;
constexpr int DoubleBits = 53;
constexpr int LeastExponent = -1074; ///< of two: the least double

/// A whole number with room for 10^(MostDigits + 1 - LeastDecimals) and a few shifts.
class WholeNumber {
public:
    void MultiplyAndAdd(std::uint32_t factor, std::uint32_t addend) noexcept {
        std::uint64_t carry = addend;
        for (std::size_t place = 0; place < m_size; ++place) {
            carry += std::uint64_t{m_words[place]} * factor;
            m_words[place] = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
        Append(static_cast<std::uint32_t>(carry));
    }
    void MultiplyByPowerOfTen(std::int64_t power) noexcept {
        for (; power >= 9; power -= 9) {
            MultiplyAndAdd(1'000'000'000, 0);
        }
        for (; power > 0; --power) {
            MultiplyAndAdd(10, 0);
        }
    }
    void MultiplyByPowerOfTwo(int power) noexcept {
        for (; power >= 31; power -= 31) {
            MultiplyAndAdd(std::uint32_t{1} << 31, 0);
        }
        MultiplyAndAdd(std::uint32_t{1} << std::max(power, 0), 0);
    }
    bool IsZero() const noexcept { return m_size == 0; }
    int BitWidth() const noexcept {
        return IsZero() ? 0 : static_cast<int>(32 * m_size) - std::countl_zero(m_words[m_size - 1]);
    }
    /// Subtracts `other` where it isn't greater; false otherwise.
    bool TakeOff(WholeNumber const& other) noexcept {
        if (IsLessThan(other)) {
            return false;
        }
        std::int64_t borrow = 0;
        for (std::size_t place = 0; place < m_size; ++place) {
            borrow += std::int64_t{m_words[place]} - (place < other.m_size ? other.m_words[place] : 0);
            m_words[place] = static_cast<std::uint32_t>(borrow);
            borrow >>= 32;
        }
        while (m_size != 0 && m_words[m_size - 1] == 0) {
            --m_size;
        }
        return true;
    }

private:
    bool IsLessThan(WholeNumber const& other) const noexcept {
        if (m_size != other.m_size) {
            return m_size < other.m_size;
        }
        std::size_t place = m_size;
        while (place != 0 && m_words[place - 1] == other.m_words[place - 1]) {
            --place;
        }
        return place != 0 && m_words[place - 1] < other.m_words[place - 1];
    }
    void Append(std::uint32_t word) noexcept {
        if (word != 0) {
            m_words[m_size++] = word;
        }
    }

    std::array<std::uint32_t, 120> m_words{}; ///< the lowest first
    std::size_t m_size = 0;
};

/// `digits` times 10^power, without its sign.
struct Decimal {
    WholeNumber digits;
    int count = 0; ///< of digits from the first that isn't zero on
    std::int64_t power = 0;
};

bool IsDigit(char character) noexcept { return character >= '0' && character <= '9'; }

/// Takes digits and a point off the front of `text`. False where there is no digit.
bool TakeDigits(std::string_view& text, Decimal& decimal) noexcept {
    bool hasDigit = false;
    bool hasPoint = false;
    bool hasMore = false;
    for (; !text.empty() && (IsDigit(text.front()) || (text.front() == '.' && !hasPoint));
         text.remove_prefix(1)) {
        if (text.front() == '.') {
            hasPoint = true;
            continue;
        }
        hasDigit = true;
        auto const digit = static_cast<std::uint32_t>(text.front() - '0');
        if (decimal.count == MostDigits) {
            hasMore = hasMore || digit != 0;
            decimal.power += !hasPoint;
            continue;
        }
        decimal.digits.MultiplyAndAdd(10, digit);
        decimal.count += !decimal.digits.IsZero();
        decimal.power -= hasPoint;
    }
    if (hasMore) {
        decimal.digits.MultiplyAndAdd(10, 1);
        ++decimal.count;
        --decimal.power;
    }
    return hasDigit;
}

/// Takes an exponent off the front of `text`, if there is one. False where it has no digit.
bool TakeExponent(std::string_view& text, std::int64_t& power) noexcept {
    if (text.empty() || (text.front() != 'e' && text.front() != 'E')) {
        return true;
    }
    text.remove_prefix(1);
    bool const isNegative = !text.empty() && text.front() == '-';
    if (isNegative || (!text.empty() && text.front() == '+')) {
        text.remove_prefix(1);
    }
    bool const hasDigit = !text.empty() && IsDigit(text.front());
    std::int64_t exponent = 0;
    for (; !text.empty() && IsDigit(text.front()); text.remove_prefix(1)) {
        // No text has so many digits that more would matter.
        exponent = std::min<std::int64_t>(exponent * 10 + (text.front() - '0'), 100'000'000'000'000'000);
    }
    power += isNegative ? -exponent : exponent;
    return hasDigit;
}

/// The double nearest to the quotient of both, which aren't zero.
double Divide(WholeNumber dividend, WholeNumber divisor) noexcept {
    int const shift = std::min(divisor.BitWidth() - dividend.BitWidth(), 2 - LeastExponent - QuotientBits);
    dividend.MultiplyByPowerOfTwo(shift);
    divisor.MultiplyByPowerOfTwo(-shift);
    std::uint64_t quotient = 0;
    for (int bit = 0; bit < QuotientBits; ++bit) {
        quotient = quotient << 1 | static_cast<std::uint64_t>(dividend.TakeOff(divisor));
        dividend.MultiplyByPowerOfTwo(1);
    }
    int const dropped = std::max(static_cast<int>(std::bit_width(quotient)) - DoubleBits, 1);
    std::uint64_t const kept = quotient >> dropped;
    // Twice what is dropped, and one more where that isn't all.
    std::uint64_t const rest =
        (quotient - (kept << dropped)) << 1 | static_cast<std::uint64_t>(!dividend.IsZero());
    bool const isUp = rest + kept % 2 > std::uint64_t{1} << dropped;
    return std::ldexp(static_cast<double>(kept + isUp), dropped - shift - (QuotientBits - 1));
}

} // namespace

std::optional<double> ParseDecimalByDivision(std::string_view text) noexcept {
    bool const isNegative = !text.empty() && text.front() == '-';
    text.remove_prefix(isNegative);
    Decimal decimal;
    if (!TakeDigits(text, decimal) || !TakeExponent(text, decimal.power) || !text.empty()) {
        return std::nullopt;
    }
    double value = 0;
    if (!decimal.digits.IsZero()) {
        std::int64_t const decimals = decimal.count - 1 + decimal.power;
        if (decimals > MostDecimals || decimals < LeastDecimals) {
            return std::nullopt;
        }
        WholeNumber divisor;
        divisor.MultiplyAndAdd(0, 1);
        divisor.MultiplyByPowerOfTen(-decimal.power);
        decimal.digits.MultiplyByPowerOfTen(decimal.power);
        value = Divide(decimal.digits, divisor);
        if (value == 0 || std::isinf(value)) {
            return std::nullopt;
        }
    }
    return isNegative ? -value : value;
}

} // namespace Zantrel::Standard
