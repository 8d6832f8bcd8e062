// SPDX-License-Identifier: Apache-2.0
#include "sax/report_texts.h"

#include "text/unicode.h"

namespace Zantrel::Sax {

std::wstring Fill(std::wstring_view pattern, std::initializer_list<std::wstring_view> parts) {
    std::wstring text;
    for (std::size_t open = pattern.find(L'{'); open != std::wstring_view::npos; open = pattern.find(L'{')) {
        text.append(pattern.substr(0, open));
        text.append(parts.begin()[static_cast<std::size_t>(pattern[open + 1] - L'0')]);
        pattern.remove_prefix(open + 3);
    }
    return text.append(pattern);
}

std::wstring Excerpt(std::string_view utf8) {
    constexpr std::size_t Longest = 80; // bytes
    std::size_t end = utf8.size();
    if (end > Longest) {
        end = Longest;
        while (end > 0 && (static_cast<unsigned char>(utf8[end]) & 0xC0) == 0x80) { // inside a character
            --end;
        }
    }
    std::wstring text;
    Text::AppendWide(utf8.substr(0, end), text);
    return end < utf8.size() ? text.append(L"...") : text;
}

std::wstring WithPath(std::wstring_view sentence, std::wstring_view path) {
    return path.empty() ? std::wstring(sentence) : Fill(L"{0} ({1})", {sentence, path});
}

} // namespace Zantrel::Sax
