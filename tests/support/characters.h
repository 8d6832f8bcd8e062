// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "xml/names.h"

#include <string>

namespace TestSupport {

/// As a pair of surrogates.
inline std::wstring Pair(char32_t character) {
    return {static_cast<wchar_t>(0xD7C0 + (character >> 10)),
            static_cast<wchar_t>(0xDC00 + (character & 0x3FF))};
}

/// As texts of this platform have it.
inline std::wstring Character(char32_t character) {
    bool const isPair = sizeof(wchar_t) == 2 && character > 0xFFFF;
    return isPair ? Pair(character) : std::wstring(1, static_cast<wchar_t>(character));
}

/// Every character that XML can carry.
inline std::wstring AllCharacters() {
    std::wstring all;
    for (char32_t code = 0; code <= 0x10FFFF; ++code) {
        if (Zantrel::Xml::IsXmlCharacter(code)) {
            all += Character(code);
        }
    }
    return all;
}

} // namespace TestSupport
