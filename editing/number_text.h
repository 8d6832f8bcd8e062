// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Numbers and flags as parameter files have them, whatever the locale.
namespace Zantrel::Editing {

/// The text without XML white space at its ends.
std::wstring_view Trim(std::wstring_view text) noexcept;

/// The whole trimmed text as one value; nothing when it is none or out of range. A leading "+" is taken, and
/// for a double "INF", "-INF" and "NaN" in any case.
std::optional<double> ParseDouble(std::wstring_view text);
std::optional<std::int32_t> ParseInteger(std::wstring_view text);
/// "true", "false", "True", "False", "1", "0", and nothing else.
std::optional<bool> ParseBool(std::wstring_view text) noexcept;

/// In the fewest digits that read back as the number.
std::wstring TextOf(double value);
/// With so many digits behind the point, as a node formats it in the classic locale.
std::wstring TextOf(double value, int precision);

} // namespace Zantrel::Editing
