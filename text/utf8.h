// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace Zantrel::Text {

/// The first character of some bytes. `size` is 0 where they are ill-formed, and also where they end inside a
/// character that is well-formed so far; only then `incomplete` is set.
struct Utf8Character {
    char32_t code = 0;
    std::size_t size = 0;
    bool incomplete = false;
};

/// The two directions of UTF-8 for one character, inline for the sake of loops over texts. Whether the
/// character is one that XML can carry is another question (xml/names.h).

/// Decodes one character of [at, end), which is not empty. Overlong forms, surrogates and values above
/// U+10FFFF are ill-formed. Nothing behind `end` is read. Whoever passes over what is ill-formed goes on one
/// byte further, so that a character that begins inside of it is found.
inline Utf8Character DecodeUtf8(char const* at, char const* end) noexcept {
    constexpr Utf8Character illFormed;
    auto const lead = static_cast<unsigned char>(*at);
    if (lead < 0x80)
        return {lead, 1, false};
    if (lead < 0xC2 || lead > 0xF4)
        return illFormed;

    std::size_t const size = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    // The second byte's range is narrower after these four leads: that is what keeps overlong forms,
    // surrogates and values above U+10FFFF out.
    unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    char32_t code = lead & (0x7Fu >> size);
    for (std::size_t index = 1; index < size; ++index, low = 0x80, high = 0xBF) {
        if (at + index == end)
            return {0, 0, true};
        auto const byte = static_cast<unsigned char>(at[index]);
        if (byte < low || byte > high)
            return illFormed;
        code = code << 6 | (byte & 0x3Fu);
    }
    return {code, size, false};
}

/// Writes the character, which is no surrogate and at most U+10FFFF, and gives the place behind its up to
/// four bytes.
inline char* EncodeUtf8(char32_t code, char* out) noexcept {
    auto const put = [&out](char32_t byte) { *out++ = static_cast<char>(byte); };
    if (code < 0x80) {
        put(code);
        return out;
    }
    if (code < 0x800) {
        put(0xC0 | code >> 6);
    } else {
        if (code < 0x10000) {
            put(0xE0 | code >> 12);
        } else {
            put(0xF0 | code >> 18);
            put(0x80 | (code >> 12 & 0x3F));
        }
        put(0x80 | (code >> 6 & 0x3F));
    }
    put(0x80 | (code & 0x3F));
    return out;
}

} // namespace Zantrel::Text
