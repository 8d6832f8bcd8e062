// SPDX-License-Identifier: Apache-2.0
#include "editing/number_text.h"

#include "standard/decimal.h"

#include <zantrel/text/string_conversion.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

// No stream and no C function: these follow the locale, which a host may change at any time, and what a file
// says may not depend on it. The conversions of the standard library that don't are stricter than files are,
// so that white space, a "+" and the words in capitals are seen to before.

namespace Zantrel::Editing {

namespace {

/// In lower case, narrow, and without a leading "+"; empty for what is no number's text.
std::string Digits(std::wstring_view text) {
    std::string digits;
    for (wchar_t const character : Trim(text)) {
        if (character >= 0x80) {
            return {};
        }
        digits += static_cast<char>(character >= L'A' && character <= L'Z' ? character + 0x20 : character);
    }
    // Without its "+" a "+-1" would be a number.
    bool const hasTwoSigns = digits.size() > 1 && digits.front() == '+' && digits[1] == '-';
    return digits.empty() || digits.front() != '+' ? digits : hasTwoSigns ? std::string() : digits.substr(1);
}

std::wstring Widen(char const* begin, char const* end) { return std::wstring(begin, end); }

} // namespace

std::wstring_view Trim(std::wstring_view text) noexcept {
    constexpr std::wstring_view blanks = L" \t\n\r";
    auto const begin = text.find_first_not_of(blanks);
    return begin == text.npos ? std::wstring_view()
                              : text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

std::optional<double> ParseDouble(std::wstring_view text) {
    std::string const digits = Digits(text);
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (digits == "inf" || digits == "-inf") {
        return digits.front() == '-' ? -infinity : infinity;
    }
    if (digits == "nan") {
        return std::numeric_limits<double>::quiet_NaN();
    }
    // The conversion has words of its own for what is not finite.
    bool const isDecimal = digits.find_first_not_of("0123456789.+-e") == digits.npos;
    return isDecimal ? Standard::ParseDecimal(digits) : std::nullopt;
}

std::optional<std::int32_t> ParseInteger(std::wstring_view text) {
    std::string const digits = Digits(text);
    char const* const end = digits.data() + digits.size();
    std::int32_t value = 0;
    auto const [stop, error] = std::from_chars(digits.data(), end, value);
    return stop == end && error == std::errc() ? std::optional(value) : std::nullopt;
}

std::optional<bool> ParseBool(std::wstring_view text) noexcept {
    std::wstring_view const word = Trim(text);
    bool const isTrue = word == L"true" || word == L"True" || word == L"1";
    bool const isFalse = word == L"false" || word == L"False" || word == L"0";
    return isTrue || isFalse ? std::optional(isTrue) : std::nullopt;
}

std::wstring TextOf(double value) {
    if (std::isnan(value)) {
        return L"NaN";
    }
    if (std::isinf(value)) {
        return value < 0 ? L"-INF" : L"INF";
    }
    std::array<char, 32> digits; // the longest is "-1.7976931348623157e+308"
    return Widen(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr);
}

std::wstring TextOf(double value, int precision) {
    if (!std::isfinite(value)) {
        return TextOf(value);
    }
    // No double has more than 1074 digits behind the point, or more than 309 in front of it.
    int const shown = precision < 0 ? 6 : std::min(precision, 1100); // as a stream has it
    std::string digits(std::size_t{330} + static_cast<std::size_t>(shown), '\0');
    char* const end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, shown)
            .ptr;
    std::wstring text = Widen(digits.data(), end);
    // A node's formatting shows the point always.
    return shown == 0 ? text + L'.' : text;
}

} // namespace Zantrel::Editing
