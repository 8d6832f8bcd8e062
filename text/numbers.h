// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace Zantrel::Text {

/// Numbers and flags as documents have them. Nothing here depends on a locale, allocates or throws.

/// The text without XML white space (blank, TAB, LF, CR) at its ends. A view into it.
inline std::string_view Trim(std::string_view text) noexcept {
    constexpr auto isNone = [](char character) { return static_cast<unsigned char>(character) > ' '; };
    if (!text.empty() && isNone(text.front()) && isNone(text.back())) {
        return text; // as nearly always
    }
    constexpr auto isSpace = [](char character) {
        return character == ' ' || character == '\t' || character == '\n' || character == '\r';
    };
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// The whole trimmed text as one value; nothing when it is no such value or out of range. A leading "+" is
/// taken, and for a double a point without digits on one of its sides, an exponent, and "INF", "+INF", "-INF"
/// and "NaN" in any case. A double is the one nearest to the decimal number.
std::optional<double> ParseDouble(std::string_view text) noexcept;
std::optional<std::int32_t> ParseInteger(std::string_view text) noexcept;
/// "true", "false", "True", "False", "1", "0", and nothing else.
std::optional<bool> ParseBool(std::string_view text) noexcept;

/// Room that PrintDouble and PrintInteger need at the most.
inline constexpr std::size_t NumberRoom = 64;

/// Prints into NumberRoom characters and gives the end; no NUL follows. A double gets `precision` significant
/// digits, at least 1 and at most 50, as "%g" prints them in the C locale; 17 read back bit for bit. "INF",
/// "-INF", "NaN" for what is not finite.
char* PrintDouble(char* into, double value, int precision) noexcept;
char* PrintInteger(char* into, std::int64_t value) noexcept;

} // namespace Zantrel::Text
