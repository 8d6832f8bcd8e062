// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace Zantrel::Text {

/// The form of a GUID, which is looked for in two ways on purpose: what identifies something must be one, and
/// what a name looks like decides which element it is written as.

/// A random GUID (version 4): an "x" stands for any hexadecimal digit, a "y" for one of 8, 9, a, b. Its
/// dashes stand where every GUID has them.
inline constexpr std::wstring_view RandomGuidPattern = L"xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx";

/// The 36 characters of a GUID, which may stand in braces; empty for any other text. A view into `text`.
std::wstring_view FindGuid(std::wstring_view text) noexcept;

/// Whether `text` looks like one by its length, dashes and braces alone: "{", any 36 characters with four
/// dashes in their places, "}". Documents tell components from other entries so, and such a name needs no
/// digits to be one. Whoever wants an identity asks FindGuid.
bool HasGuidShape(std::wstring_view text) noexcept;

} // namespace Zantrel::Text
