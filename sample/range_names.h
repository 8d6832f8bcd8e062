// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The list of ranges in an export profile, which hosts have no constants for.
namespace Zantrel::Sample {

inline constexpr wchar_t const* Ranges = L"Ranges";
inline constexpr wchar_t const* RangeBegin = L"Begin";
inline constexpr wchar_t const* RangeEnd = L"End";

} // namespace Zantrel::Sample
