// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace Zantrel::Xml {

/// Whether XML 1.0 can carry the character at all, as itself or as a reference.
bool IsXmlCharacter(char32_t character) noexcept;

/// Whether an ASCII character can begin a name.
constexpr bool IsAsciiNameStart(char32_t character) noexcept {
    char32_t const lower = character | 0x20;
    return (lower >= 'a' && lower <= 'z') || character == '_' || character == ':';
}

/// Whether XML 1.0, fifth edition, lets a name begin, or go on, with the character.
bool IsNameStart(char32_t character) noexcept;
bool IsNameCharacter(char32_t character) noexcept;

/// Whether `utf8` is a name of the fifth edition. False also for an empty or ill-formed text.
bool IsXmlName(std::string_view utf8) noexcept;

/// Whether `utf8` is a name of the fourth edition, whose characters are a subset of the fifth's: the names
/// that every reader accepts, whichever edition it was written for. What we write keeps to these.
bool IsPortableXmlName(std::string_view utf8) noexcept;

} // namespace Zantrel::Xml
