// SPDX-License-Identifier: Apache-2.0
#include "xml/lexemes.h"

namespace Zantrel::Xml {

// Names beyond ASCII have ASCII runs in them mostly, which go in blocks.
char const* SkipNameBeyondAscii(char const* at) noexcept {
    while (!IsAscii(*at)) {
        auto const character = Decode(at);
        if (!IsNameCharacter(character.code))
            break;
        at = SkipAsciiName(at + character.size);
    }
    return at;
}

} // namespace Zantrel::Xml
