// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

/// What the sentences for people are made of: patterns that stand in tables, and excerpts of what they quote.
namespace Zantrel::Text {

/// `pattern` with each "{0}", "{1}", ... replaced by that one of `parts`, in the pattern's own order. The
/// parts may hold anything: what is put in is not looked at again. A pattern names no part that isn't given,
/// and has no other braces.
std::string Fill(std::string_view pattern, std::initializer_list<std::string_view> parts);
std::wstring Fill(std::wstring_view pattern, std::initializer_list<std::wstring_view> parts);

/// `utf8`, or where it has more bytes than `longest` its beginning and "...", so that a sentence stays one
/// whatever a document holds. Never cut inside a character.
std::string Shorten(std::string_view utf8, std::size_t longest = 80);

/// "U+0000" for a character below U+10000. Those that XML can't carry all are.
std::string CodePointText(char32_t character);

} // namespace Zantrel::Text
