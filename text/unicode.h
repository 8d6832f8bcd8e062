// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Zantrel::Text {

/// Conversions between wide texts and UTF-8 that append, so that a buffer that is kept costs no allocation.
/// The target must not be what the view looks at. They throw std::bad_alloc only.

/// Appends `text` as UTF-8. A pair of surrogates is joined, also where wchar_t has 32 bits. False, and `utf8`
/// holds what came before, at a lone surrogate or a value above U+10FFFF.
bool AppendUtf8(std::wstring_view text, std::string& utf8);

/// As AppendUtf8, but goes on: a lone surrogate becomes the three bytes of its code point, a value above
/// U+10FFFF the byte FF. Neither is UTF-8, so whoever checks the result refuses it.
void AppendUtf8Unchecked(std::wstring_view text, std::string& utf8);

/// Converts the ASCII characters that `text` begins with and gives their number. `into` has room for as many
/// bytes as `text` has units.
std::size_t NarrowAscii(std::wstring_view text, char* into) noexcept;

/// Appends well-formed UTF-8 as wide text; each ill-formed byte becomes U+FFFD.
void AppendWide(std::string_view utf8, std::wstring& text);

/// Whether `text` converts to exactly these UTF-8 bytes. Never allocates.
bool EqualsUtf8(std::wstring_view text, std::string_view utf8) noexcept;

} // namespace Zantrel::Text
