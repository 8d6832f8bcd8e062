// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "text/utf8.h"
#include "xml/blocks.h"
#include "xml/names.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace Zantrel::Sax {

/// The places of a document that take text.
enum class TextPlace { Content, Attribute, Comment };

/// The one search for all places that text goes to: it stops at whatever some place may not have as it
/// stands, which is then decoded, checked and escaped for its own place. That is everything that is not
/// ASCII, each control character, and four signs. A tab in a text, or a quotation mark, is stopped at in
/// vain, which is rare; in exchange there is one search for all, and it runs over plain text in blocks.
inline constexpr auto NeedsCare = [](auto bytes) {
    return bytes.BelowOrNotAscii(' ') | bytes.Equal('&') | bytes.Equal('<') | bytes.Equal('>') |
           bytes.Equal('"');
};

/// Whether the text is the same in every place.
inline bool IsPlain(std::string_view text) noexcept {
    char const* const end = text.data() + text.size();
    return Xml::Find(text.data(), end, NeedsCare) == end;
}

/// What the ASCII characters that need care and that XML can carry become. Readers turn CR into LF, and in
/// attributes white space into blanks: what has to come back is a reference there. ">" is always escaped, for
/// the sake of "]]>".
struct Escape {
    char character;
    std::string_view inContent;
    std::string_view inAttribute;
};

inline constexpr Escape Escapes[] = {
    {'&', "&amp;", "&amp;"},  {'<', "&lt;", "&lt;"}, {'>', "&gt;", "&gt;"}, {'"', "\"", "&quot;"},
    {'\r', "&#13;", "&#13;"}, {'\t', "\t", "&#9;"},  {'\n', "\n", "&#10;"},
};

/// What one of these becomes in a place that isn't a comment.
inline std::string_view EscapeOf(char character, TextPlace place) noexcept {
    auto const* const escape = std::find_if(std::begin(Escapes), std::end(Escapes),
                                            [=](Escape const& row) { return row.character == character; });
    return place == TextPlace::Content ? escape->inContent : escape->inAttribute;
}

/// What a text can't be written for.
struct TextFault {
    enum class Kind { None, NoUtf8, NoXmlCharacter };

    Kind kind = Kind::None;
    char32_t character = 0; ///< that XML can't carry
};

/// Gives `put` the text in pieces, escaped for its place, up to the first fault.
template <class Put> TextFault PutEscaped(std::string_view text, TextPlace place, Put put) {
    char const* const end = text.data() + text.size();
    for (char const* at = text.data();;) {
        char const* const care = Xml::Find(at, end, NeedsCare);
        put(std::string_view(at, static_cast<std::size_t>(care - at)));
        at = care;
        if (at == end) {
            return {};
        }
        Text::Utf8Character const character = Text::DecodeUtf8(at, end);
        if (character.size == 0) {
            return {TextFault::Kind::NoUtf8};
        }
        if (!Xml::IsXmlCharacter(character.code)) {
            return {TextFault::Kind::NoXmlCharacter, character.code};
        }
        if (character.code >= 0x80 || place == TextPlace::Comment) {
            put(std::string_view(at, character.size));
        } else {
            put(EscapeOf(*at, place));
        }
        at += character.size;
    }
}

} // namespace Zantrel::Sax
