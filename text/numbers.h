// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace Zantrel::Text {

/// The text without XML white space (blank, TAB, LF, CR) at its ends.
std::string_view Trim(std::string_view text) noexcept;

/// The whole trimmed text as one value, whatever the locale; nothing when it is no such value or out of
/// range. A leading "+" is taken; "INF", "-INF" and "NaN" in any case.
std::optional<double> ParseDouble(std::string_view text) noexcept;
std::optional<std::int32_t> ParseInteger(std::string_view text) noexcept;
/// "true", "false", "True", "False", "1", "0".
std::optional<bool> ParseBool(std::string_view text) noexcept;

/// Room that PrintDouble and PrintInteger need at the most.
inline constexpr std::size_t NumberRoom = 64;

/// Prints with `precision` significant digits (17 reads back bit for bit), whatever the locale, and gives the
/// end. "INF", "-INF", "NaN" for what is not finite.
char* PrintDouble(char* into, double value, int precision) noexcept;
char* PrintInteger(char* into, std::int64_t value) noexcept;

} // namespace Zantrel::Text
