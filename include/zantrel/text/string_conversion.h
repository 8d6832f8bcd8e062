// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <string>
#include <string_view>

/// Conversions between the wide texts of the interface and the UTF-8 of documents. Any thread; they throw
/// std::bad_alloc only.
namespace StringConversion {

/// Wide text from UTF-8. Each ill-formed byte becomes U+FFFD.
ZANTREL_EXPORT std::wstring Utf8ToNative(std::string_view utf8);

/// UTF-8 from wide text; surrogate pairs are joined. A lone surrogate becomes the three bytes of its code
/// point, which no XML document may hold, so that a writer refuses the text instead of changing it.
ZANTREL_EXPORT std::string NativeToUtf8(std::wstring_view text);

} // namespace StringConversion
