// SPDX-License-Identifier: Apache-2.0
#include <zantrel/text/string_conversion.h>

#include "text/unicode.h"

namespace StringConversion {

std::wstring Utf8ToNative(std::string_view utf8) {
    std::wstring text;
    Zantrel::Text::AppendWide(utf8, text);
    return text;
}

std::string NativeToUtf8(std::wstring_view text) {
    std::string utf8;
    Zantrel::Text::AppendUtf8Unchecked(text, utf8);
    return utf8;
}

} // namespace StringConversion
