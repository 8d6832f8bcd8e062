// SPDX-License-Identifier: Apache-2.0
#include "text/sentences.h"

#include <cstddef>

namespace Zantrel::Text {

namespace {

/// One digit a place, so ten parts at the most.
template <class Char>
std::basic_string<Char> FillAny(std::basic_string_view<Char> pattern,
                                std::initializer_list<std::basic_string_view<Char>> parts) {
    constexpr std::size_t SizeOfPlace = 3; // "{0}"
    std::basic_string<Char> text;
    for (;;) {
        std::size_t const open = pattern.find(Char{'{'});
        text.append(pattern.substr(0, open));
        if (open == pattern.npos) {
            return text;
        }
        text.append(parts.begin()[static_cast<std::size_t>(pattern[open + 1] - Char{'0'})]);
        pattern.remove_prefix(open + SizeOfPlace);
    }
}

bool IsInsideCharacter(char byte) noexcept { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

} // namespace

std::string Fill(std::string_view pattern, std::initializer_list<std::string_view> parts) {
    return FillAny(pattern, parts);
}

std::wstring Fill(std::wstring_view pattern, std::initializer_list<std::wstring_view> parts) {
    return FillAny(pattern, parts);
}

std::string Shorten(std::string_view utf8, std::size_t longest) {
    if (utf8.size() <= longest) {
        return std::string(utf8);
    }
    std::size_t end = longest;
    while (end > 0 && IsInsideCharacter(utf8[end])) { // to 0 where the text is no UTF-8
        --end;
    }
    return std::string(utf8.substr(0, end)).append("...");
}

std::string CodePointText(char32_t character) {
    std::string text = "U+";
    for (int shift = 12; shift >= 0; shift -= 4) {
        text.push_back("0123456789ABCDEF"[character >> shift & 0xF]);
    }
    return text;
}

} // namespace Zantrel::Text
