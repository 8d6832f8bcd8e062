// SPDX-License-Identifier: Apache-2.0
#include "text/numbers.h"

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

#ifdef __SIZEOF_INT128__
// Seventeen digits of the usual magnitudes in exact 128-bit arithmetic: the same characters as std::to_chars
// gives, in a third of its time.
//
// A double is f * 2^e with a fraction f of 53 bits. Its first seventeen digits are the whole number nearest
// to f * 2^e * 10^(16 - d), where d is its decimal exponent. For magnitudes from 2^-19 to 1e17 the power of
// ten is between 10^0 and 10^22, so the product has at most 53 + 74 bits, and the power of two is a shift.
// The bits that a shift to the right drops decide how to round, and a tie goes to the even number, as
// to_chars does it. d is guessed from e by the logarithm of two and may be one too small. Then, and also
// where rounding carries into an eighteenth digit, the number is scaled once more with the next d.

__extension__ using Unsigned128 = unsigned __int128;

constexpr int Digits = 17;
constexpr double SmallestFast = 0x1p-19; // 1.9e-6
constexpr double FastEnd = 1e17;
constexpr std::uint64_t TenTo16 = 10'000'000'000'000'000;

constexpr std::array<Unsigned128, Digits + 6> MakePowersOfTen() {
    std::array<Unsigned128, Digits + 6> powers{1};
    for (std::size_t exponent = 1; exponent < powers.size(); ++exponent) {
        powers[exponent] = powers[exponent - 1] * 10;
    }
    return powers;
}

constexpr auto PowersOfTen = MakePowersOfTen();

/// fraction * 10^power * 2^exponent, rounded half to even. The fraction has 53 bits and the power is at most
/// 22, so the product fits; a positive exponent comes with a power of 1 at the most.
std::uint64_t Scale(std::uint64_t fraction, int power, int exponent) noexcept {
    Unsigned128 const product = fraction * PowersOfTen[static_cast<std::size_t>(power)];
    if (exponent >= 0) {
        return static_cast<std::uint64_t>(product << exponent);
    }
    Unsigned128 const one = Unsigned128{1} << -exponent;
    Unsigned128 const rest = product & (one - 1);
    auto const whole = static_cast<std::uint64_t>(product >> -exponent);
    return whole + (rest > one / 2 || (rest == one / 2 && whole % 2 != 0));
}

// Back from digits: the number is a whole one of 64 bits divided by 10^places. Where that one fits the 53
// bits of a double, so does the power, and the processor's division rounds once. Otherwise both are scaled to
// 64 bits for a quotient of 62 or 63, in whose lowest bit, far behind the last that counts, is kept whether
// there is a remainder; the conversion then rounds as the exact quotient would be.

constexpr std::size_t MostPlainDigits = 19; // the most that always fit 64 bits

double Quotient(std::uint64_t digits, std::size_t places) noexcept {
    auto const power = static_cast<std::uint64_t>(PowersOfTen[places]);
    if (digits >> 53 == 0 && power >> 53 == 0) {
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
    constexpr std::uint64_t zeros = 0x3030303030303030u;
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
        bytes = (bytes & ~others) | (zeros & others);
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

constexpr std::array<char, 200> MakePairs() {
    std::array<char, 200> pairs{};
    for (std::size_t value = 0; value < 100; ++value) {
        pairs[2 * value] = static_cast<char>('0' + value / 10);
        pairs[2 * value + 1] = static_cast<char>('0' + value % 10);
    }
    return pairs;
}

constexpr auto Pairs = MakePairs();

void PrintEightDigits(char* into, std::uint32_t value) noexcept {
    std::uint32_t const high = value / 10'000;
    std::uint32_t const low = value % 10'000;
    std::memcpy(into, &Pairs[2 * (high / 100)], 2);
    std::memcpy(into + 2, &Pairs[2 * (high % 100)], 2);
    std::memcpy(into + 4, &Pairs[2 * (low / 100)], 2);
    std::memcpy(into + 6, &Pairs[2 * (low % 100)], 2);
}

/// The first `used` digits of `text`, which is twice as long as a number, as "%g" has them for the exponent.
char* LayOut(char* into, char const* text, int used, int decimal) noexcept {
    if (decimal >= 0) {
        std::memcpy(into, text, Digits);
        if (used <= decimal + 1) {
            return into + decimal + 1; // zeros in front of the point stay
        }
        into[decimal + 1] = '.';
        std::memcpy(into + decimal + 2, text + decimal + 1, Digits);
        return into + used + 1;
    }
    if (decimal >= -4) {
        std::memcpy(into, "0.000", 5);
        std::memcpy(into + 1 - decimal, text, Digits);
        return into + 1 - decimal + used;
    }
    into[0] = text[0];
    into[1] = '.';
    std::memcpy(into + 2, text + 1, Digits);
    into += used == 1 ? 1 : used + 1;
    std::memcpy(into, "e-0", 3);
    into[3] = static_cast<char>('0' - decimal);
    return into + 4;
}

/// `value` is in [SmallestFast, FastEnd).
char* PrintSeventeenDigits(char* into, double value) noexcept {
    auto const bits = std::bit_cast<std::uint64_t>(value);
    std::uint64_t const fraction = (bits & ((std::uint64_t{1} << 52) - 1)) | std::uint64_t{1} << 52;
    int const exponent = static_cast<int>(bits >> 52) - 1075;
    // The decimal exponent, or one less: 78913 / 2^18 is a little below log10(2).
    int decimal = ((exponent + 52) * 78913) >> 18;
    std::uint64_t digits = Scale(fraction, Digits - 1 - decimal, exponent);
    if (digits >= 10 * TenTo16) {
        ++decimal;
        digits = Scale(fraction, Digits - 1 - decimal, exponent);
    }

    // Copied on as a whole from any of its digits, for that is faster than by the number of those that count.
    char text[2 * Digits] = {};
    text[0] = static_cast<char>('0' + digits / TenTo16);
    digits %= TenTo16;
    PrintEightDigits(text + 1, static_cast<std::uint32_t>(digits / 100'000'000));
    PrintEightDigits(text + 9, static_cast<std::uint32_t>(digits % 100'000'000));
    int used = Digits;
    while (text[used - 1] == '0') {
        --used;
    }
    return LayOut(into, text, used, decimal);
}
#endif

} // namespace

namespace {

// std::from_chars does the work, exactly and whatever the locale. What it takes and documents don't have, and
// what documents have and it doesn't take, is decided before it: signs, and the words for what is not finite.
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
        char const* const end = text.data() + text.size();
        auto const [stop, error] = std::from_chars(text.data(), end, value);
        if (error != std::errc() || stop != end) {
            return std::nullopt;
        }
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
    if (std::isnan(value)) {
        return Print(into, "NaN");
    }
    if (std::isinf(value)) {
        return Print(into, value < 0 ? "-INF" : "INF");
    }
#ifdef __SIZEOF_INT128__
    double const magnitude = std::fabs(value);
    if (precision == Digits && magnitude < FastEnd && (magnitude >= SmallestFast || magnitude == 0)) {
        if (std::signbit(value)) {
            *into++ = '-';
        }
        return magnitude != 0 ? PrintSeventeenDigits(into, magnitude) : Print(into, "0");
    }
#endif
    // Fifty digits, a sign, "0.000" and an exponent keep within NumberRoom.
    return std::to_chars(into, into + NumberRoom, value, std::chars_format::general,
                         std::clamp(precision, 1, 50))
        .ptr;
}

char* PrintInteger(char* into, std::int64_t value) noexcept {
    return std::to_chars(into, into + NumberRoom, value).ptr;
}

} // namespace Zantrel::Text
