// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace Zantrel::Xml {

/// Which characters XML has, and which names are made of. The tokeniser takes the names of the fifth edition;
/// what is written keeps to the fourth's, which every reader takes. For ASCII both are the same
/// (xml/scan.h).

/// Whether XML 1.0 can carry the character at all, as itself or as a reference.
bool IsXmlCharacter(char32_t character) noexcept;

/// Whether XML 1.0, fifth edition, lets a name begin, or go on, with the character.
bool IsNameStart(char32_t character) noexcept;
bool IsNameCharacter(char32_t character) noexcept;

/// Whether `utf8` is a name of the fourth edition, whose characters are a subset of the fifth's: the names
/// that every reader accepts, whichever edition it was written for. What we write keeps to these.
bool IsPortableXmlName(std::string_view utf8) noexcept;

} // namespace Zantrel::Xml
