// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/layout_node.h>
#include <zantrel/sax/sax_reader.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What the readers of whole layouts make of the texts in a file.
namespace Zantrel {

/// The parts of a text that ";" stands between, `most` at the most: the last one then has the rest, as it is.
/// One part more than there are ";", and so one of an empty text. Views into it.
std::vector<std::wstring_view> Split(std::wstring_view text, std::size_t most = static_cast<std::size_t>(-1));

/// Makes the node a choice among the values that ";" stands between; among none where the text is empty.
void SetOptions(LayoutNode& node, std::wstring_view text);

/// Takes an attribute that is a whole number. One that is anything else is noted and leaves the number.
void ReadNumber(std::int32_t& number, std::string_view word, KelSAX::ISAXReader& reader);
void ReadNumber(std::uint64_t& number, std::string_view word, KelSAX::ISAXReader& reader);

/// Notes a default or a limit, called `what`, of which something is lost where it becomes a value of that
/// type: a number with more behind it, a flag in other letters. An empty text is none, and fits.
void NoteUnlessValue(std::wstring const& text, eTypeLayoutNode type, std::string_view what,
                     KelSAX::ISAXReader& reader);

/// Notes a sentence about the text of an attribute: "{0}" is the word and "{1}" the text.
void NoteText(std::wstring_view pattern, std::string_view word, std::string_view text,
              KelSAX::ISAXReader& reader);

} // namespace Zantrel
