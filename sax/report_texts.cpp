// SPDX-License-Identifier: Apache-2.0
#include "sax/report_texts.h"

#include "text/sentences.h"
#include "text/unicode.h"

namespace Zantrel::Sax {

std::wstring Excerpt(std::string_view utf8) {
    std::wstring text;
    Text::AppendWide(Text::Shorten(utf8), text);
    return text;
}

std::wstring WithPath(std::wstring_view sentence, std::wstring_view path) {
    return path.empty() ? std::wstring(sentence) : Text::Fill(L"{0} ({1})", {sentence, path});
}

} // namespace Zantrel::Sax
