// SPDX-License-Identifier: Apache-2.0
#include "text/unicode.h"

#include "text/surrogates.h"
#include "text/utf8.h"

#include <cstddef>
#include <cstdint>

// ASCII, which mostly is all of a text, goes in blocks; the rest goes character by character. To wide, the
// beginning goes into room that was made for the case that there is nothing else: no character becomes fewer
// bytes than it has units, so the room is enough, and the text is cut to what was converted before the rest
// is appended.
//
// On the wide side a unit is a code point or one half of a pair, whatever the width of wchar_t: halves that
// stand together are joined everywhere, and only where wchar_t has 16 bits are characters split again.
namespace Zantrel::Text {

namespace {

// Nearly all texts are ASCII. They are converted in blocks, whose inner loops have a fixed length so that the
// compiler makes vector instructions of them.
constexpr std::size_t Block = 16;
constexpr std::size_t NarrowBlockSize = 8;

/// Converts a block as if it were ASCII, and says whether it is.
bool NarrowBlock(wchar_t const* text, char* into) noexcept {
    std::uint32_t all = 0;
    for (std::size_t index = 0; index < NarrowBlockSize; ++index) {
        auto const unit = static_cast<std::uint32_t>(text[index]);
        all |= unit;
        into[index] = static_cast<char>(unit);
    }
    return all < 0x80;
}

std::size_t WidenAscii(std::string_view utf8, wchar_t* into) noexcept {
    std::size_t done = 0;
    for (; utf8.size() - done >= Block; done += Block) {
        unsigned all = 0;
        for (std::size_t index = 0; index < Block; ++index) {
            auto const byte = static_cast<unsigned char>(utf8[done + index]);
            all |= byte;
            into[done + index] = static_cast<wchar_t>(byte);
        }
        if (all >= 0x80) {
            break;
        }
    }
    for (; done < utf8.size() && static_cast<unsigned char>(utf8[done]) < 0x80; ++done) {
        into[done] = static_cast<wchar_t>(utf8[done]);
    }
    return done;
}

/// What one unit becomes: UTF-8, or for what is no code point the bytes that AppendUtf8Unchecked promises.
struct Encoded {
    char bytes[4] = {};
    std::size_t size = 0;

    std::string_view View() const noexcept { return {bytes, size}; }
};

Encoded Encode(char32_t code) noexcept {
    Encoded result;
    auto const byte = [](char32_t value) { return static_cast<char>(static_cast<unsigned char>(value)); };
    if (IsCodePoint(code)) {
        result.size = static_cast<std::size_t>(Text::EncodeUtf8(code, result.bytes) - result.bytes);
    } else if (code <= 0xDFFF) {
        result = {{byte(0xED), byte(0x80 | (code >> 6 & 0x3F)), byte(0x80 | (code & 0x3F))}, 3};
    } else {
        result = {{byte(0xFF)}, 1};
    }
    return result;
}

/// Appends `text` up to the first thing that is no code point, or to its end when `keepAll`.
bool Append(std::wstring_view text, std::string& utf8, bool keepAll) {
    char ascii[256]; // the room of the string isn't used, since it would be cleared first
    while (!text.empty()) {
        std::wstring_view const part = text.substr(0, sizeof ascii);
        std::size_t const size = NarrowAscii(part, ascii);
        utf8.append(ascii, size);
        text.remove_prefix(size);
        if (size == part.size()) {
            continue;
        }
        do { // where one isn't ASCII, mostly the next isn't either
            char32_t const code = TakeCodePoint(text);
            if (!keepAll && !IsCodePoint(code)) {
                return false;
            }
            utf8.append(Encode(code).View());
        } while (!text.empty() && static_cast<std::uint32_t>(text.front()) >= 0x80);
    }
    return true;
}

void AppendCodePoint(char32_t code, std::wstring& text) {
    if constexpr (sizeof(wchar_t) == 2) {
        if (code >= 0x10000) {
            text.push_back(static_cast<wchar_t>(HighSurrogateOf(code)));
            code = LowSurrogateOf(code);
        }
    }
    text.push_back(static_cast<wchar_t>(code));
}

} // namespace

// What is left behind the last block is the end of one more, which begins in the one before.
std::size_t NarrowAscii(std::wstring_view text, char* into) noexcept {
    std::size_t done = 0;
    while (text.size() - done >= NarrowBlockSize && NarrowBlock(text.data() + done, into + done)) {
        done += NarrowBlockSize;
    }
    if (done != 0 && text.size() - done < NarrowBlockSize) {
        std::size_t const last = text.size() - NarrowBlockSize;
        if (NarrowBlock(text.data() + last, into + last)) {
            return text.size();
        }
    }
    for (; done < text.size() && static_cast<std::uint32_t>(text[done]) < 0x80; ++done) {
        into[done] = static_cast<char>(text[done]);
    }
    return done;
}

bool AppendUtf8(std::wstring_view text, std::string& utf8) { return Append(text, utf8, false); }

void AppendUtf8Unchecked(std::wstring_view text, std::string& utf8) { Append(text, utf8, true); }

void AppendWide(std::string_view utf8, std::wstring& text) {
    std::size_t const start = text.size();
    text.resize(start + utf8.size());
    std::size_t const ascii = WidenAscii(utf8, text.data() + start);
    text.resize(start + ascii);
    char const* const end = utf8.data() + utf8.size();
    for (char const* at = utf8.data() + ascii; at != end;) {
        Text::Utf8Character const character = Text::DecodeUtf8(at, end);
        AppendCodePoint(character.size != 0 ? character.code : U'\uFFFD', text);
        at += character.size != 0 ? character.size : 1;
    }
}

bool EqualsUtf8(std::wstring_view text, std::string_view utf8) noexcept {
    if (text.size() > utf8.size()) {
        return false; // no unit becomes less than a byte
    }
    std::size_t ascii = 0;
    while (ascii < text.size() && text[ascii] == static_cast<unsigned char>(utf8[ascii]) &&
           text[ascii] < 0x80) {
        ++ascii;
    }
    text.remove_prefix(ascii);
    utf8.remove_prefix(ascii);
    while (!text.empty()) {
        char32_t const code = TakeCodePoint(text);
        if (!IsCodePoint(code)) {
            return false;
        }
        Encoded const encoded = Encode(code);
        if (utf8.substr(0, encoded.size) != encoded.View()) {
            return false;
        }
        utf8.remove_prefix(encoded.size);
    }
    return utf8.empty();
}

} // namespace Zantrel::Text
