// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "text/utf8.h"
#include "xml/names.h"
#include "xml/scan.h"

#include <algorithm>
#include <string_view>

/// The smallest pieces of markup, in a buffer of whole and allowed characters with a NUL at its end
/// (InputBuffer). None of them ends at a place that it was given: each stops at the first character that
/// doesn't belong to it, the NUL at the latest.
namespace Zantrel::Xml {

/// CR never gets here: line ends are normalised as they are read.
inline bool IsSpace(char byte) noexcept { return byte == ' ' || byte == '\n' || byte == '\t'; }

/// The first byte from `at` on that is no white space.
inline char const* SkipSpace(char const* at) noexcept {
    while (IsSpace(*at))
        ++at;
    return at;
}

/// Whether the byte is a character by itself.
inline bool IsAscii(char byte) noexcept { return static_cast<unsigned char>(byte) < 0x80; }

/// A letter in lower case; everything else unchanged.
inline char ToLower(char byte) noexcept {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte | 0x20) : byte;
}

/// Whether the bytes are these but for capitals.
inline bool IsInAnyCase(std::string_view bytes, std::string_view lowerCase) noexcept {
    return std::equal(bytes.begin(), bytes.end(), lowerCase.begin(), lowerCase.end(),
                      [](char byte, char lower) { return ToLower(byte) == lower; });
}

/// Characters are whole, so that decoding needs no end.
inline Text::Utf8Character Decode(char const* at) noexcept { return Text::DecodeUtf8(at, at + 4); }

/// The end of a name that begins before `at`, where it goes on with a character beyond ASCII or ends.
char const* SkipNameBeyondAscii(char const* at) noexcept;

/// The end of the name at `at`, which is `at` itself if there is none.
inline char const* SkipName(char const* at) noexcept {
    if (!IsAscii(*at))
        return IsNameStart(Decode(at).code) ? SkipNameBeyondAscii(at) : at;
    if (!TableOf<decltype(AsciiNameStarts)>[static_cast<unsigned char>(*at)])
        return at;
    at = SkipAsciiName(at);
    return IsAscii(*at) ? at : SkipNameBeyondAscii(at);
}

} // namespace Zantrel::Xml
