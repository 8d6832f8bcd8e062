// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

/// What standard libraries of today may still lack. Below all floors, and the one private folder that both
/// libraries include.
namespace Zantrel::Standard {

/// The double nearest to a decimal number, of two the even one, whatever the locale: what std::from_chars
/// gives where that takes all of `text`. Digits with a point or without one, "-" in front and an exponent
/// behind. Nothing for any other text and for what a double can't hold: more than the largest, and what isn't
/// zero and would become it.
std::optional<double> ParseDecimalByDivision(std::string_view text) noexcept;

/// Alike, by the standard library where it says that it has all such conversions: libstdc++ does, libc++ 14
/// doesn't. Callers keep the words for what isn't finite away, which it would take, too.
inline std::optional<double> ParseDecimal(std::string_view text) noexcept {
#ifdef __cpp_lib_to_chars
    double value = 0;
    char const* const end = text.data() + text.size();
    auto const [stop, error] = std::from_chars(text.data(), end, value);
    return stop == end && error == std::errc() ? std::optional(value) : std::nullopt;
#else
    return ParseDecimalByDivision(text);
#endif
}

} // namespace Zantrel::Standard
