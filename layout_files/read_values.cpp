// SPDX-License-Identifier: Apache-2.0
#include "layout_files/read_values.h"

#include "sax/report_texts.h"
#include "text/numbers.h"
#include "text/sentences.h"

#include <zantrel/text/string_conversion.h>

#include <charconv>
#include <system_error>

namespace Zantrel {

namespace {

template <class T> void Read(T& number, std::string_view word, KelSAX::ISAXReader& reader) {
    std::string text;
    if (!reader.ReadAttribute(text, word)) {
        return;
    }
    // All of the text has to be the number: of "12 mm" nothing is taken, and not 12.
    std::string_view digits = Text::Trim(text);
    if (digits.size() > 1 && digits[0] == '+' && digits[1] != '-') { // as in all numbers of files
        digits.remove_prefix(1);
    }
    char const* const end = digits.data() + digits.size();
    T value{};
    auto const [stop, error] = std::from_chars(digits.data(), end, value);
    if (stop == end && error == std::errc()) {
        number = value;
    } else {
        NoteText(L"{0}=\"{1}\" is no whole number that it can be, and counts as absent.", word, text, reader);
    }
}

bool IsValue(std::wstring const& text, eTypeLayoutNode type) {
    if (type == Bool) {
        return text == L"True" || text == L"False";
    }
    std::string const number = StringConversion::NativeToUtf8(text);
    return type == Int ? Text::ParseInteger(number).has_value() : Text::ParseDouble(number).has_value();
}

} // namespace

std::vector<std::wstring_view> Split(std::wstring_view text, std::size_t most) {
    std::vector<std::wstring_view> parts;
    std::size_t end = 0;
    // The last part takes what is left, with what separates in it. An empty text is one empty part.
    while (parts.size() + 1 < most && (end = text.find(L';')) != text.npos) {
        parts.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    parts.push_back(text);
    return parts;
}

// A template has no display names, but each option has a place for one, as in every layout.
void SetOptions(LayoutNode& node, std::wstring_view text) {
    node.m_type = Options;
    node.m_optionValues.clear();
    if (!text.empty()) {
        std::vector<std::wstring_view> const values = Split(text);
        node.m_optionValues.assign(values.begin(), values.end());
    }
    node.m_optionDisplayNames.assign(node.m_optionValues.size(), std::wstring());
}

void ReadNumber(std::int32_t& number, std::string_view word, KelSAX::ISAXReader& reader) {
    Read(number, word, reader);
}
void ReadNumber(std::uint64_t& number, std::string_view word, KelSAX::ISAXReader& reader) {
    Read(number, word, reader);
}

void NoteUnlessValue(std::wstring const& text, eTypeLayoutNode type, std::string_view what,
                     KelSAX::ISAXReader& reader) {
    bool const isText = type != Int && type != Double && type != Distance && type != Bool;
    if (!reader.HasReport() || isText || text.empty() || IsValue(text, type)) {
        return;
    }
    NoteText(type == Bool  ? L"{0} \"{1}\" is neither \"True\" nor \"False\", and means the latter."
             : type == Int ? L"{0} \"{1}\" isn't wholly a 32-bit integer."
                           : L"{0} \"{1}\" isn't wholly a number.",
             what, StringConversion::NativeToUtf8(text), reader);
}

void NoteText(std::wstring_view pattern, std::string_view word, std::string_view text,
              KelSAX::ISAXReader& reader) {
    if (reader.HasReport()) {
        reader.NoteDropped(Text::Fill(pattern, {Sax::Excerpt(word), Sax::Excerpt(text)}));
    }
}

} // namespace Zantrel
