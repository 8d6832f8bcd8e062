// SPDX-License-Identifier: Apache-2.0
#include "text/numbers.h"

#include "standard/decimal.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace Zantrel::Text {

namespace {

bool IsDigit(char character) noexcept { return character >= '0' && character <= '9'; }

bool EqualsInAnyCase(std::string_view text, std::string_view lowerCase) noexcept {
    return std::equal(
        text.begin(), text.end(), lowerCase.begin(), lowerCase.end(), [](char left, char right) {
            return (left >= 'A' && left <= 'Z' ? static_cast<char>(left - 'A' + 'a') : left) == right;
        });
}

/// Takes the sign off `text`; true for "-".
bool TakeSign(std::string_view& text) noexcept {
    bool const negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) {
        text.remove_prefix(1);
    }
    return negative;
}

char* Print(char* into, std::string_view text) noexcept {
    std::memcpy(into, text.data(), text.size());
    return into + text.size();
}

constexpr std::uint64_t ZeroDigits = 0x3030303030303030u; ///< eight times '0'

/// A number of eight digits as bytes, each the digit's value; the first one stands in the lowest byte.
// It is split into twice four digits, which are split together, and so on.
std::uint64_t DigitBytes(std::uint64_t value) noexcept {
    std::uint64_t const thousands = value / 10'000;
    value = thousands + ((value - 10'000 * thousands) << 32);
    std::uint64_t const hundreds = (value * 5243 >> 19) & 0x0000007F0000007Fu;
    value = hundreds + ((value - 100 * hundreds) << 16);
    std::uint64_t const tens = (value * 103 >> 10) & 0x000F000F000F000Fu;
    return tens + ((value - 10 * tens) << 8);
}

#ifdef __SIZEOF_INT128__
// Seventeen digits of the usual magnitudes in exact 128-bit arithmetic: the same characters as std::to_chars
// gives, in a fraction of its time.
//
// A double is f * 2^e with a fraction f of 53 bits. Its first seventeen digits are the whole number nearest
// to f * 2^e * 10^(16 - d), where d is its decimal exponent. For magnitudes from 2^-19 to 1e17 the power of
// ten is between 10^0 and 10^22, so the product has at most 53 + 74 bits, and the power of two is a shift.
// The bits that a shift to the right drops decide how to round, and a tie goes to the even number, as
// to_chars does it. d is guessed from e by the logarithm of two and may be one too small, which a comparison
// with the power of ten tells: no double is between a power and what stands for it in the table. None is so
// near below a power either that it would be rounded up to it, into an eighteenth digit.

__extension__ using Unsigned128 = unsigned __int128;

constexpr int Digits = 17;
constexpr double SmallestFast = 0x1p-19; // 1.9e-6
constexpr double FastEnd = 1e17;

constexpr std::array<Unsigned128, Digits + 6> MakePowersOfTen() {
    std::array<Unsigned128, Digits + 6> powers{1};
    for (std::size_t exponent = 1; exponent < powers.size(); ++exponent) {
        powers[exponent] = powers[exponent - 1] * 10;
    }
    return powers;
}

constexpr auto PowersOfTen = MakePowersOfTen();

/// The smallest doubles that are not below 10^-5, 10^-4 and so on.
constexpr int FirstDecade = -5;
constexpr std::array Decades = {1e-5, 1e-4, 1e-3, 1e-2, 1e-1, 1e0,  1e1,  1e2,  1e3,  1e4,  1e5, 1e6,
                                1e7,  1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17};

/// fraction * 10^power * 2^exponent, rounded half to even. The fraction has 53 bits and the power is at most
/// 22, so the product fits; a positive exponent comes with a power of 1 at the most.
std::uint64_t Scale(std::uint64_t fraction, int power, int exponent) noexcept {
    Unsigned128 const product = fraction * PowersOfTen[static_cast<std::size_t>(power)];
    if (exponent >= 0) {
        return static_cast<std::uint64_t>(product << exponent);
    }
    if (exponent > -64) { // half of the registers and of the time
        auto const whole = static_cast<std::uint64_t>(product >> -exponent);
        std::uint64_t const rest = static_cast<std::uint64_t>(product) << (64 + exponent);
        return whole + (rest > (std::uint64_t{1} << 63) - whole % 2);
    }
    Unsigned128 const one = Unsigned128{1} << -exponent;
    Unsigned128 const rest = product & (one - 1);
    auto const whole = static_cast<std::uint64_t>(product >> -exponent);
    return whole + (rest > one / 2 - whole % 2);
}

// Back from digits: the number is a whole one of 64 bits divided by 10^places. Where that one fits the 53
// bits of a double, so does the power, and the processor's division rounds once. Otherwise both are scaled to
// 64 bits for a quotient of 62 or 63, in whose lowest bit, far behind the last that counts, is kept whether
// there is a remainder; the conversion then rounds as the exact quotient would be.

constexpr std::size_t MostPlainDigits = 19; // the most that always fit 64 bits

double Quotient(std::uint64_t digits, std::size_t places) noexcept {
    auto const power = static_cast<std::uint64_t>(PowersOfTen[places]);
    if (digits == 0 || (digits >> 53 == 0 && power >> 53 == 0)) {
        return static_cast<double>(digits) / static_cast<double>(power);
    }
    int const up = std::countl_zero(digits);
    int const powerUp = std::countl_zero(power);
    Unsigned128 const dividend = Unsigned128{digits << up} << 62;
    std::uint64_t const divisor = power << powerUp;
    auto const quotient = static_cast<std::uint64_t>(dividend / divisor);
    bool const hasRest = Unsigned128{quotient} * divisor != dividend;
    auto const scale = static_cast<std::uint64_t>(1023 - 62 - up + powerUp) << 52;
    return static_cast<double>(static_cast<std::int64_t>(quotient | hasRest)) * std::bit_cast<double>(scale);
}

/// Whether the eight bytes are digits.
bool AreDigits(std::uint64_t bytes) noexcept {
    constexpr std::uint64_t high = 0xF0F0F0F0F0F0F0F0u;
    return ((bytes & high) | ((bytes + 0x0606060606060606u) & high) >> 4) == 0x3333333333333333u;
}

/// The number that they are; the first one stands in the lowest byte.
// Neighbours are joined: ones to tens, tens to hundreds, hundreds to ten thousands.
std::uint64_t EightDigits(std::uint64_t bytes) noexcept {
    bytes = (bytes & 0x0F0F0F0F0F0F0F0Fu) * (10 * 256 + 1) >> 8;
    bytes = (bytes & 0x00FF00FF00FF00FFu) * (100 * 65536 + 1) >> 16;
    return (bytes & 0x0000FFFF0000FFFFu) * ((std::uint64_t{10'000} << 32) + 1) >> 32;
}

/// Appends the digits of [at, end) to `value`. False where something else stands there. The bytes from
/// `begin` on, in front of them, may be read, too: the last few digits are taken from the eight bytes that
/// they end.
bool AppendDigits(char const* begin, char const* at, char const* end, std::uint64_t& value) noexcept {
    std::uint64_t bytes = 0;
    for (; end - at >= 8; at += 8) {
        std::memcpy(&bytes, at, 8);
        if (!AreDigits(bytes)) {
            return false;
        }
        value = value * 100'000'000 + EightDigits(bytes);
    }
    if (at != end && end - begin >= 8) {
        std::memcpy(&bytes, end - 8, 8);
        std::uint64_t const others = ~std::uint64_t{0} >> 8 * (end - at);
        bytes = (bytes & ~others) | (ZeroDigits & others);
        value = value * static_cast<std::uint64_t>(PowersOfTen[static_cast<std::size_t>(end - at)]) +
                EightDigits(bytes);
        return AreDigits(bytes);
    }
    for (; at != end && IsDigit(*at); ++at) {
        value = value * 10 + static_cast<std::uint64_t>(*at - '0');
    }
    return at == end;
}

/// A number as most are: digits with a point or without one, and not too many.
bool ParsePlainNumber(std::string_view text, double& value) noexcept {
    char const* const begin = text.data();
    char const* const end = begin + text.size();
    if (text.size() > MostPlainDigits + 1 || std::endian::native != std::endian::little) {
        return false;
    }
    char const* at = begin;
    std::uint64_t digits = 0;
    for (; at != end && IsDigit(*at); ++at) {
        digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
    }
    bool const hasPoint = at != end && *at == '.';
    at += hasPoint;
    auto const places = static_cast<std::size_t>(end - at);
    std::size_t const count = text.size() - hasPoint;
    if (count == 0 || count > MostPlainDigits || !AppendDigits(begin, at, end, digits)) {
        return false;
    }
    value = Quotient(digits, places);
    return true;
}

/// Seventeen digits as characters, the bytes of the words being in their order. They are placed by whole
/// words, of which the later ones overwrite what the earlier ones had too much, and never read back.
struct DigitText {
    std::uint64_t front;
    std::uint64_t middle;
    char last;

    void Place(char* into) const noexcept {
        std::memcpy(into, &front, 8);
        std::memcpy(into + 8, &middle, 8);
        into[16] = last;
    }
    /// With a point behind the digit at `position`.
    void PlaceWithPoint(char* into, int position) const noexcept {
        bool const isLate = position >= 8;
        int const half = 4 * (position + 1 - (isLate ? 8 : 0)); // of the shift, which may be by all bits
        std::uint64_t const behind = (isLate ? middle : front) >> half >> half;
        Place(into);
        into[position + 1] = '.';
        std::memcpy(into + position + 2, &behind, 8);
        if (!isLate) {
            std::memcpy(into + 9, &middle, 8);
        }
        if (position < 16) {
            into[17] = last;
        }
    }
};

/// The first `used` digits as "%g" has them for the exponent.
char* LayOut(char* into, DigitText const& text, int used, int decimal) noexcept {
    if (decimal >= 0) {
        text.PlaceWithPoint(into, decimal);
        int const whole = decimal + 1; // zeros in front of the point stay
        return into + std::max(whole, used + (used > whole));
    }
    if (decimal >= -4) {
        std::memcpy(into, "0.000", 5);
        text.Place(into + 1 - decimal);
        return into + 1 - decimal + used;
    }
    text.PlaceWithPoint(into, 0);
    into += used + (used > 1);
    std::memcpy(into, "e-0", 3);
    into[3] = static_cast<char>('0' - decimal);
    return into + 4;
}

/// How many of seventeen digits count: the bytes of two words and one more.
// Without a branch, for numbers follow no pattern, and a wrong guess costs more than all of this. Zeros at
// the end of a word are its highest bytes; the first word isn't zero, nor the second where the rest isn't.
int CountDigits(std::uint64_t front, std::uint64_t middle, std::uint64_t last) noexcept {
    unsigned const hasMore = (middle | last) != 0;
    std::uint64_t const word = front ^ ((front ^ middle) & (0 - std::uint64_t{hasMore}));
    unsigned const used = 8 + 8 * hasMore - static_cast<unsigned>(std::countl_zero(word | 1)) / 8;
    return static_cast<int>(used + (Digits - used) * unsigned{last != 0});
}

/// `value` is in [SmallestFast, FastEnd).
char* PrintSeventeenDigits(char* into, double value) noexcept {
    auto const bits = std::bit_cast<std::uint64_t>(value);
    std::uint64_t const fraction = (bits & ((std::uint64_t{1} << 52) - 1)) | std::uint64_t{1} << 52;
    int const exponent = static_cast<int>(bits >> 52) - 1075;
    // The decimal exponent, or one less: 78913 / 2^18 is a little below log10(2).
    int decimal = ((exponent + 52) * 78913) >> 18;
    decimal += value >= Decades[static_cast<std::size_t>(decimal + 1 - FirstDecade)];
    std::uint64_t const digits = Scale(fraction, Digits - 1 - decimal, exponent);

    std::uint64_t const upper = digits / 1'000'000'000;
    std::uint64_t const lower = digits - 1'000'000'000 * upper;
    std::uint64_t const front = DigitBytes(upper);
    std::uint64_t const middle = DigitBytes(lower / 10);
    std::uint64_t const last = lower % 10;
    DigitText const text{front | ZeroDigits, middle | ZeroDigits, static_cast<char>('0' + last)};
    return LayOut(into, text, CountDigits(front, middle, last), decimal);
}
#endif

} // namespace

namespace {

// The standard library does the work, exactly and whatever the locale. What it takes and documents don't
// have, and what documents have and it doesn't take, is decided before it: signs, and the words for what is
// not finite.
std::optional<double> ParseAnyDouble(std::string_view text) noexcept {
    if (EqualsInAnyCase(text, "nan")) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    bool const negative = TakeSign(text);
    double value = std::numeric_limits<double>::infinity();
    if (!EqualsInAnyCase(text, "inf")) {
        // It would also take a second sign, "infinity" and "nan(1)".
        if (text.empty() || !(IsDigit(text.front()) || text.front() == '.')) {
            return std::nullopt;
        }
        std::optional<double> const parsed = Standard::ParseDecimal(text);
        if (!parsed) {
            return std::nullopt;
        }
        value = *parsed;
    }
    return negative ? -value : value;
}

} // namespace

std::optional<double> ParseDouble(std::string_view text) noexcept {
    text = Trim(text);
#ifdef __SIZEOF_INT128__
    std::string_view number = text;
    bool const negative = TakeSign(number);
    double value = 0;
    if (ParsePlainNumber(number, value)) {
        return negative ? -value : value;
    }
#endif
    return ParseAnyDouble(text);
}

std::optional<std::int32_t> ParseInteger(std::string_view text) noexcept {
    text = Trim(text);
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text.front() == '-') {
            return std::nullopt;
        }
    }
    std::int32_t value = 0;
    char const* const end = text.data() + text.size();
    auto const [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end) {
        return std::nullopt;
    }
    return value;
}

std::optional<bool> ParseBool(std::string_view text) noexcept {
    text = Trim(text);
    if (text == "true" || text == "True" || text == "1") {
        return true;
    }
    if (text == "false" || text == "False" || text == "0") {
        return false;
    }
    return std::nullopt;
}

char* PrintDouble(char* into, double value, int precision) noexcept {
#ifdef __SIZEOF_INT128__
    double const magnitude = std::fabs(value);
    bool const isUsual = magnitude < FastEnd && (magnitude >= SmallestFast || magnitude == 0);
    if (isUsual && precision == Digits && std::endian::native == std::endian::little) {
        *into = '-';
        into += std::signbit(value);
        return magnitude != 0 ? PrintSeventeenDigits(into, magnitude) : Print(into, "0");
    }
#endif
    if (std::isnan(value)) {
        return Print(into, "NaN");
    }
    if (std::isinf(value)) {
        return Print(into, value < 0 ? "-INF" : "INF");
    }
    // Fifty digits, a sign, "0.000" and an exponent keep within NumberRoom.
    return std::to_chars(into, into + NumberRoom, value, std::chars_format::general,
                         std::clamp(precision, 1, 50))
        .ptr;
}

char* PrintInteger(char* into, std::int64_t value) noexcept {
    auto const magnitude = static_cast<std::uint64_t>(value < 0 ? -(value + 1) : value) + (value < 0);
    if (magnitude >= 100'000'000 || std::endian::native != std::endian::little) {
        return std::to_chars(into, into + NumberRoom, value).ptr;
    }
    *into = '-';
    into += value < 0;
    // Zeros in front are the lowest bytes; the last digit stays.
    std::uint64_t const bytes = DigitBytes(magnitude);
    int const zerosInFront = std::countr_zero(bytes | std::uint64_t{1} << 56) / 8;
    std::uint64_t const text = (bytes | ZeroDigits) >> 8 * zerosInFront;
    std::memcpy(into, &text, 8);
    return into + (8 - zerosInFront);
}

} // namespace Zantrel::Text
