// SPDX-License-Identifier: Apache-2.0
#include <zantrel/io/uuid.h>

#include "io/system.h"
#include "text/guid.h"

#include <cstdint>
#include <string_view>
#include <system_error>

namespace KelSDK {

// Each place of the pattern takes four random bits, drawn thirty-two at a time.
std::wstring CreateUUID_t() {
    constexpr std::wstring_view Digits = L"0123456789abcdef";
    std::uint32_t bits = 0;
    unsigned left = 0;
    std::wstring text(Zantrel::Text::RandomGuidPattern);
    for (wchar_t& place : text) {
        if (place != L'x' && place != L'y') {
            continue;
        }
        if (left == 0) {
            if (Zantrel::Io::Error const error = Zantrel::Io::RandomBits(bits)) {
                throw std::system_error(error, std::system_category(), "no random bits");
            }
            left = 8;
        }
        place = Digits[place == L'x' ? bits & 0xF : 0x8 | (bits & 0x3)]; // the variant has two random bits
        bits >>= 4;
        --left;
    }
    return text;
}

} // namespace KelSDK
