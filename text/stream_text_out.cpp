// SPDX-License-Identifier: Apache-2.0
#include <zantrel/text/stream_text_out.h>

#include <charconv>
#include <limits>

namespace {

template <class Char> void Append(std::basic_string<Char>& text, std::string_view ascii) {
    text.append(ascii.begin(), ascii.end());
}

/// std::to_chars knows no locale, and a number of its type can't have more digits than there is room for.
template <class Char, class Integer> void AppendInteger(std::basic_string<Char>& text, Integer value) {
    char digits[std::numeric_limits<Integer>::digits10 + 2];
    char const* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    Append(text, {digits, static_cast<std::size_t>(end - digits)});
}

} // namespace

MStreamTextOut<char>& MStreamTextOut<char>::operator<<(bool value) {
    Append(m_text, value ? "true" : "false");
    return *this;
}

MStreamTextOut<char>& MStreamTextOut<char>::operator<<(unsigned long long value) {
    AppendInteger(m_text, value);
    return *this;
}

MStreamTextOut<wchar_t>& MStreamTextOut<wchar_t>::operator<<(bool value) {
    Append(m_text, value ? "true" : "false");
    return *this;
}

MStreamTextOut<wchar_t>& MStreamTextOut<wchar_t>::operator<<(unsigned long long value) {
    AppendInteger(m_text, value);
    return *this;
}

MStreamTextOut<wchar_t>& MStreamTextOut<wchar_t>::operator<<(std::int32_t value) {
    AppendInteger(m_text, value);
    return *this;
}
